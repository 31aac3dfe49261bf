#include <kiv/AppearanceSerializer.h>

#include <kiv/AppearanceParser.h>

#include <QJsonDocument>
#include <QJsonObject>

namespace kiv {

namespace {

/// A record as JSON: {"kind":0,"id":...} or {"kind":1,"id":...,"key":...,"appearance":"<document>"}. The document
/// stands in it as text, so that exactly the bytes come back that its writer made.
struct Record {
    int kind = -1;
    String id;
    String key;
    String document;
};

/// All of it: an id that was cut at a zero byte may be that of another appearance.
QString toQt(const String& text)
{
    return QString::fromLocal8Bit(text.data(), int(text.size()));
}

String toText(const Record& record)
{
    QJsonObject object{{"kind", record.kind}, {"id", toQt(record.id)}};
    if (record.kind == EditedMaterialChanged)
        object.insert("key", toQt(record.key));
    if (record.kind != EditedMaterialAdded)
        object.insert("appearance", QString::fromStdString(record.document));
    return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

Record fromText(const String& text)
{
    const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(text)).object();
    Record record;
    record.kind = object.value("kind").toInt(-1);
    record.id = object.value("id").toString().toLocal8Bit().toStdString();
    record.key = object.value("key").toString().toLocal8Bit().toStdString();
    record.document = object.value("appearance").toString().toStdString();
    return record;
}

CAppearanceInstancePtr stateBefore(const Record& record, const CAppearanceLibraryManager& manager)
{
    CAppearanceParser parser(manager);
    const auto appearance = parser.AppearanceFromString(record.document);
    return appearance && appearance->GetId() == record.id ? appearance : nullptr;
}

CAppearanceInstancePtr takeBackAdded(CAppearanceLibrary& library, const Record& record)
{
    const auto appearance = library.FindInstance(record.id);
    library.DeleteInstance(record.id);
    return appearance;
}

// The object stays the one that browsers and editors hold, and what the cloud knows of it is no part of an edit.
CAppearanceInstancePtr takeBackChanged(CAppearanceLibrary& library, const Record& record,
                                       const CAppearanceLibraryManager& manager)
{
    const auto appearance = library.FindInstance(record.id);
    const auto before = appearance ? stateBefore(record, manager) : nullptr;
    if (!before)
        return {};
    before->SetCloudFlag(appearance->GetCloudFlag());
    appearance->Assign(*before);
    return appearance;
}

CAppearanceInstancePtr takeBackDeleted(CAppearanceLibrary& library, const Record& record,
                                       const CAppearanceLibraryManager& manager)
{
    const auto appearance = stateBefore(record, manager);
    return appearance && library.AddInstance(appearance) ? appearance : nullptr;
}

}  // namespace

String CAppearanceSerializer::SerializeEditedMaterialData(const String& id, int kind, const String& text) const
{
    const auto appearance = m_library ? m_library->FindInstance(id) : nullptr;
    if (!appearance || kind < EditedMaterialAdded || kind > EditedMaterialDeleted)
        return {};
    Record record{kind, id, text, {}};
    if (kind != EditedMaterialAdded)
        record.document = CAppearanceParser(m_manager).AppearanceToString(appearance);
    return toText(record);
}

CAppearanceInstancePtr CAppearanceSerializer::DeserializeEditedMaterialData(const String& text) const
{
    const Record record = fromText(text);
    if (!m_library || record.id.empty())
        return {};
    switch (record.kind) {
    case EditedMaterialAdded:
        return takeBackAdded(*m_library, record);
    case EditedMaterialChanged:
        return takeBackChanged(*m_library, record, m_manager);
    case EditedMaterialDeleted:
        return takeBackDeleted(*m_library, record, m_manager);
    default:
        return {};
    }
}

}  // namespace kiv
