#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>

/// Local records of what the cloud has: beside a document, in "CloudLib", a copy of it as it was sent.
namespace UploadRecords {

/// A file as it is at a moment.
struct State {
    qint64 size = -1;
    QDateTime modified;
    bool operator==(const State& other) const { return size == other.size && modified == other.modified; }
};
State StateOf(const QString& path);

/// Copies the document to its record, replacing an older one. False when that is not possible, or the document is not
/// any more as it was. Any thread.
bool Keep(const QString& document, const State& asItWas);
QString RecordOf(const QString& document);

}  // namespace UploadRecords

/// Tells documents whose record is the same, and reads no pair twice while both files are as they were. One thread.
class CUploadComparison {
public:
    bool IsRecorded(const QString& document);
    /// How often files were read, for those who measure.
    int CountReadings() const { return m_readings; }

private:
    struct Verdict {
        UploadRecords::State document;
        UploadRecords::State record;
        bool isSame = false;
    };
    QHash<QString, Verdict> m_verdicts;
    int m_readings = 0;
};
