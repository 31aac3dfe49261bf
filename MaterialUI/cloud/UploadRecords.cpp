#include "UploadRecords.h"

#include <kiv/system/StoredPath.h>

#include <QFileInfo>

namespace {

constexpr qint64 MaxDocument = 64 << 20;

bool isSameContent(const QString& one, const QString& other)
{
    QByteArray first;
    QByteArray second;
    QString reason;
    return kiv::system::ReadWholeFile(one, MaxDocument, first, reason) &&
           kiv::system::ReadWholeFile(other, MaxDocument, second, reason) && first == second;
}

}  // namespace

QString UploadRecords::RecordOf(const QString& document)
{
    const QFileInfo file(document);
    return file.path() + QStringLiteral("/CloudLib/") + file.fileName();
}

UploadRecords::State UploadRecords::StateOf(const QString& path)
{
    const QFileInfo file(path);
    return file.isFile() ? State{file.size(), file.lastModified()} : State{};
}

bool UploadRecords::Keep(const QString& document, const State& asItWas)
{
    QString reason;
    return StateOf(document) == asItWas &&
           kiv::system::CopyWholeFile(document, RecordOf(document), MaxDocument, reason);
}

bool CUploadComparison::IsRecorded(const QString& document)
{
    const QString record = UploadRecords::RecordOf(document);
    const UploadRecords::State documentNow = UploadRecords::StateOf(document);
    const UploadRecords::State recordNow = UploadRecords::StateOf(record);
    if (recordNow.size < 0 || recordNow.size != documentNow.size)
        return false;
    Verdict& verdict = m_verdicts[document];
    if (!(verdict.document == documentNow && verdict.record == recordNow)) {
        ++m_readings;
        verdict = {documentNow, recordNow, isSameContent(document, record)};
    }
    return verdict.isSame;
}
