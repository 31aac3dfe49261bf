#pragma once

#include <QDateTime>
#include <QString>
#include <QVector>
#include <QXmlStreamReader>

namespace nuvs {

/// What a server tells of one file or folder.
struct SDavEntry {
    QString reference;
    bool isThere = true;
    bool isFolder = false;
    qint64 size = -1;
    QDateTime modified;
};

/// Reads the answer to a PROPFIND. Hostile until read: no document types (so no entities), bounded depth.
class CMultistatusReader {
public:
    explicit CMultistatusReader(const QByteArray& xml) : m_xml(xml) {}

    /// False when it is no multistatus answer.
    bool Read(QVector<SDavEntry>& entries);

private:
    bool ReadStart();
    bool Is(const char* name) const;
    void Skip();
    SDavEntry ReadResponse();
    void ReadPropertyStatus(SDavEntry& entry);
    void ReadProperties(SDavEntry& entry);
    void ReadProperty(SDavEntry& entry);
    bool ReadIsCollection();
    bool ReadIsSuccess();

    QXmlStreamReader m_xml;
};

}  // namespace nuvs
