#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>

/// Local records of what the cloud has: beside a document, in "CloudLib", a copy of it as it was sent.
namespace UploadRecords {

/// Copies the document to its record, replacing an older one. False when that is not possible. Any thread.
bool Keep(const QString& document);
QString RecordOf(const QString& document);

}  // namespace UploadRecords

/// Tells documents whose record is the same, and reads no pair twice while both files are as they were. One thread.
class CUploadComparison {
public:
    bool IsRecorded(const QString& document);
    /// How often files were read, for those who measure.
    int CountReadings() const { return m_readings; }

private:
    struct State {
        qint64 size = -1;
        QDateTime modified;
        bool operator==(const State& other) const { return size == other.size && modified == other.modified; }
    };
    struct Verdict {
        State document;
        State record;
        bool isSame = false;
    };
    static State stateOf(const QString& path);

    QHash<QString, Verdict> m_verdicts;
    int m_readings = 0;
};
