#include "MultistatusReader.h"

#include <QLocale>

namespace nuvs {

namespace {

constexpr int DeepestSkipped = 64;

qint64 readSize(const QString& text)
{
    bool isNumber = false;
    const qint64 size = text.trimmed().toLongLong(&isNumber);
    return isNumber && size >= 0 ? size : -1;
}

// Such dates are always in Greenwich's time and in English.
QDateTime readDate(const QString& text)
{
    QDateTime date = QLocale::c().toDateTime(text.trimmed(), QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
    date.setTimeSpec(Qt::UTC);
    return date;
}

}  // namespace

bool CMultistatusReader::Read(QVector<SDavEntry>& entries)
{
    if (!ReadStart() || !Is("multistatus"))
        return false;
    while (m_xml.readNextStartElement()) {
        if (Is("response"))
            entries.append(ReadResponse());
        else
            Skip();
    }
    return !m_xml.hasError();
}

bool CMultistatusReader::ReadStart()
{
    while (!m_xml.atEnd() && !m_xml.isStartElement()) {
        if (m_xml.readNext() == QXmlStreamReader::DTD)
            return false;
    }
    return m_xml.isStartElement();
}

bool CMultistatusReader::Is(const char* name) const
{
    return m_xml.name() == QLatin1String(name) && m_xml.namespaceUri() == QLatin1String("DAV:");
}

void CMultistatusReader::Skip()
{
    for (int depth = 1; depth > 0 && !m_xml.atEnd();) {
        const QXmlStreamReader::TokenType token = m_xml.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : token == QXmlStreamReader::EndElement ? -1 : 0;
        if (depth > DeepestSkipped)
            m_xml.raiseError(QStringLiteral("too deep"));
    }
}

SDavEntry CMultistatusReader::ReadResponse()
{
    SDavEntry entry;
    while (m_xml.readNextStartElement()) {
        if (Is("href"))
            entry.reference = m_xml.readElementText();
        else if (Is("status"))
            entry.isThere = ReadIsSuccess();
        else if (Is("propstat"))
            ReadPropertyStatus(entry);
        else
            Skip();
    }
    return entry;
}

// The status may stand before or after the properties that it is about.
void CMultistatusReader::ReadPropertyStatus(SDavEntry& entry)
{
    SDavEntry told = entry;
    bool isKnown = true;
    while (m_xml.readNextStartElement()) {
        if (Is("prop"))
            ReadProperties(told);
        else if (Is("status"))
            isKnown = ReadIsSuccess();
        else
            Skip();
    }
    if (isKnown)
        entry = told;
}

void CMultistatusReader::ReadProperties(SDavEntry& entry)
{
    while (m_xml.readNextStartElement())
        ReadProperty(entry);
}

void CMultistatusReader::ReadProperty(SDavEntry& entry)
{
    if (Is("resourcetype"))
        entry.isFolder = ReadIsCollection();
    else if (Is("getcontentlength"))
        entry.size = readSize(m_xml.readElementText());
    else if (Is("getlastmodified"))
        entry.modified = readDate(m_xml.readElementText());
    else
        Skip();
}

bool CMultistatusReader::ReadIsCollection()
{
    bool isCollection = false;
    while (m_xml.readNextStartElement()) {
        isCollection = isCollection || Is("collection");
        Skip();
    }
    return isCollection;
}

bool CMultistatusReader::ReadIsSuccess()
{
    return m_xml.readElementText().section(QLatin1Char(' '), 1, 1).startsWith(QLatin1Char('2'));
}

}  // namespace nuvs
