#include "SynchronisationTest.h"

#include <CloudService.h>
#include <NetworkStatusMonitor.h>

#include <kiv/system/Connectivity.h>

#include <QtTest>

#include <algorithm>
#include <utility>

void CFaultyCloud::ReadLog()
{
    m_log += GetScript().TakeLog();
}

QStringList CFaultyCloud::TakeRequests(const QByteArray& method)
{
    ReadLog();
    QStringList requests;
    for (const CRequestRecord& record : std::exchange(m_log, {})) {
        if (method.isEmpty() || record.method == method)
            requests += record.method + ' ' + record.path;
    }
    return requests;
}

int CFaultyCloud::CountAsked(const QByteArray& method)
{
    ReadLog();
    return int(
        std::count_if(m_log.cbegin(), m_log.cend(), [&](const auto& record) { return record.method == method; }));
}

void CSynchronisationTest::prepare()
{
    CCloudTest::prepare();
    kiv::system::OverrideConnectivity(true);
    QTRY_VERIFY(NetworkStatusMonitor::Instance().IsOnline());
}

void CSynchronisationTest::finish()
{
    kiv::system::OverrideConnectivity({});
    CCloudTest::finish();
}

// What a dialog left in the queue as it went is not for the next test.
void CSynchronisationTest::cleanup()
{
    (void)CloudRequests::Logout().Wait();
    const auto step = [] {
        CCloudService::Instance().PeriodicStep();
        return IsIdle();
    };
    QVERIFY(QTest::qWaitFor(step, 30 * 1000));
    forgetExpectedWarnings();
}

bool CSynchronisationTest::IsIdle()
{
    return CCloudService::Instance().GetStatus().GetWaiting() == 0;
}

bool CSynchronisationTest::AreDownloadsOver()
{
    const CDownloadInformation::Counts counts = CCloudService::Instance().GetDownloads().GetInformation().Get();
    return counts.requested > 0 && counts.requested == counts.ended;
}

QString CSynchronisationTest::Synchronise(SyncedDialog& dialog)
{
    dialog.pressSynchronize();
    (void)QTest::qWaitFor([&] { return IsIdle() && dialog.countsText().isEmpty(); }, 30 * 1000);
    return dialog.lastCounts();
}

void CSynchronisationTest::Compare(const CSyncedCloud& cloud, const SyncedProfile& profile)
{
    QCOMPARE(cloud.Documents(), profile.documents());
    QCOMPARE(cloud.Textures(), profile.textures());
    QCOMPARE(profile.records(), profile.documents());
}

QString CSynchronisationTest::Counts(int succeeded, int failed, int waiting)
{
    return QString(u8"同步成功：%1  同步失败：%2  等待同步：%3").arg(succeeded).arg(failed).arg(waiting);
}
