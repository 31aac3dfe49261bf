#include <MaterialTest.h>
#include <NetworkStatusMonitor.h>

#include <kiv/system/Connectivity.h>

#include <QElapsedTimer>

using kiv::system::OverrideConnectivity;

namespace {

constexpr int s_hour = 3600 * 1000;  // ms

}  // namespace

class TestNetworkStatus : public MaterialTest {
    Q_OBJECT

protected:
    void prepare() override { m_inItsInterval = std::make_unique<NetworkStatusMonitor>(s_hour); }

private slots:
    void init() { OverrideConnectivity(std::nullopt); }

    // The one of the process runs since before main().
    void theMonitorFollowsWhatIsHeard()
    {
        for (const bool online : {true, false, true}) {
            OverrideConnectivity(online);
            QTRY_COMPARE(NetworkStatusMonitor::Instance().IsOnline(), online);
        }
    }

    void theFirstAnswerNeedsNoThread_data()
    {
        const auto row = testColumns<bool>("online");
        row("online", true);
        row("offline", false);
    }

    void theFirstAnswerNeedsNoThread()
    {
        QFETCH(bool, online);
        OverrideConnectivity(online);
        QCOMPARE(NetworkStatusMonitor().IsOnline(), online);
    }

    // A process that ends must not be held up by the thread, wherever in its round the thread is.
    void stoppingWaitsForNothing()
    {
        QElapsedTimer time;
        time.start();
        m_inItsInterval.reset();
        for (int round = 0; round < 200; ++round)
            NetworkStatusMonitor atItsStart(s_hour);
        QVERIFY2(time.elapsed() < 60000, "stopping waits for the interval");
    }

    void theEnvironmentOverrides_data()
    {
        const auto row = testColumns<QByteArray, bool, bool>("text", "understood", "online");
        row("online", "online", true, true);
        row("offline", "offline", true, false);
        row("misspelt", "Off", false, true);
    }

    void theEnvironmentOverrides()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, understood);
        QFETCH(bool, online);
        OverrideConnectivity(true);
        qputenv("MATERIAL_NETWORK", text);
        QVERIFY2(kiv::system::IsOnlineAtStart(), "nothing reads the variable by itself");
        QCOMPARE(kiv::system::OverrideConnectivityFromEnvironment(), understood);
        qunsetenv("MATERIAL_NETWORK");
        QCOMPARE(kiv::system::IsOnlineAtStart(), online);
        QCOMPARE(kiv::system::CConnectivityPoller().IsOnline(), std::optional<bool>(online));
    }

private:
    std::unique_ptr<NetworkStatusMonitor> m_inItsInterval;
};

MATERIAL_TEST_MAIN(TestNetworkStatus)

#include "TestNetworkStatus.moc"
