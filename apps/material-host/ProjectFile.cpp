#include "ProjectFile.h"

#include "BuildingReader.h"

#include <kiv/AppearanceParser.h>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>

#include <set>

using kiv::CAppearanceInstancePtr;

namespace {

const QString FormatName = QStringLiteral("material-project");

QString say(const char* text)
{
    return QCoreApplication::translate("ProjectFile", text);
}

/// Collects the materials of a project, each once, and tells their places.
class MaterialList {
public:
    explicit MaterialList(const kiv::CAppearanceLibraryManager& manager) : m_parser(manager) {}

    int add(const CAppearanceInstancePtr& appearance, const char* source)
    {
        const auto known = std::find(m_added.begin(), m_added.end(), appearance);
        if (known != m_added.end())
            return int(known - m_added.begin());
        m_added.push_back(appearance);
        const QString document = QString::fromStdString(m_parser.AppearanceToString(appearance));
        m_json.append(QJsonObject{{"source", source}, {"document", document}});
        return m_json.size() - 1;
    }
    const QJsonArray& json() const { return m_json; }

private:
    kiv::CAppearanceParser m_parser;
    std::vector<CAppearanceInstancePtr> m_added;
    QJsonArray m_json;
};

}  // namespace

QByteArray ProjectFile::write(const ProjectContent& content) const
{
    MaterialList materials(m_manager);
    for (const CAppearanceInstancePtr& appearance : content.projectMaterials)
        materials.add(appearance, "project");
    QJsonObject assignments;
    for (auto it = content.assignments.begin(); it != content.assignments.end(); ++it)
        assignments[it.key()] = materials.add(it.value(), "reference");
    const QJsonObject root{{"format", FormatName},
                           {"version", Version},
                           {"building", content.building.source},
                           {"materials", materials.json()},
                           {"assignments", assignments}};
    return QJsonDocument(root).toJson();
}

bool ProjectFile::read(const QByteArray& bytes, ProjectContent& content)
{
    m_materials.clear();
    QJsonObject root;
    if (!readHead(bytes, root))
        return false;
    ProjectContent read;
    BuildingReader building(m_language);
    if (!building.read(root["building"].toObject(), read.building))
        return refuse(building.reason());
    if (!readMaterials(root["materials"].toArray(), read) || !readAssignments(root["assignments"].toObject(), read))
        return false;
    content = read;
    return true;
}

bool ProjectFile::readHead(const QByteArray& bytes, QJsonObject& root)
{
    QJsonParseError error;
    root = QJsonDocument::fromJson(bytes, &error).object();
    if (error.error != QJsonParseError::NoError)
        return refuse(say(QT_TRANSLATE_NOOP("ProjectFile", "it is not valid JSON (%1, at byte %2)"))
                          .arg(error.errorString())
                          .arg(error.offset));
    if (root["format"].toString() != FormatName)
        return refuse(say(QT_TRANSLATE_NOOP("ProjectFile", "it is not a project of this program")));
    const int version = root["version"].toInt();
    if (version > Version)
        return refuse(
            say(QT_TRANSLATE_NOOP("ProjectFile", "it was saved by a newer version (format %1)")).arg(version));
    return version == Version || refuse(say(QT_TRANSLATE_NOOP("ProjectFile", "its format version is missing")));
}

bool ProjectFile::readMaterials(const QJsonArray& json, ProjectContent& content)
{
    kiv::CAppearanceParser parser(m_manager);
    std::set<kiv::String> ids;
    for (const QJsonValue& value : json) {
        const QString place = QString("materials/%1: ").arg(m_materials.size());
        const QString source = value["source"].toString();
        if (source != "project" && source != "reference")
            return refuse(place + say(QT_TRANSLATE_NOOP("ProjectFile", "the source is neither project nor reference")));
        const auto appearance = parser.AppearanceFromString(value["document"].toString().toStdString());
        if (!appearance)
            return refuse(place + QString::fromLocal8Bit(parser.GetLastError().Text().c_str()));
        m_materials.push_back(source == "project" ? appearance : known(appearance));
        if (source != "project")
            continue;
        if (appearance->GetId().empty() || !ids.insert(appearance->GetId()).second)
            return refuse(place + say(QT_TRANSLATE_NOOP("ProjectFile", "the id is empty or occurs twice")));
        content.projectMaterials.push_back(appearance);
    }
    return true;
}

bool ProjectFile::readAssignments(const QJsonObject& json, ProjectContent& content)
{
    for (auto it = json.begin(); it != json.end(); ++it) {
        const QString place = "assignments/" + it.key() + ": ";
        const BuildingElement* element = content.building.find(it.key());
        if (!element || !element->takesMaterial())
            return refuse(place + say(QT_TRANSLATE_NOOP("ProjectFile", "the building has no such element")));
        const int index = it.value().toInt(-1);
        if (index < 0 || index >= int(m_materials.size()))
            return refuse(place + say(QT_TRANSLATE_NOOP("ProjectFile", "there is no such material")));
        content.assignments.insert(it.key(), m_materials[std::size_t(index)]);
    }
    return true;
}

/// The library's own appearance when the library still has the same one, so that the library's dialog can show it.
CAppearanceInstancePtr ProjectFile::known(const CAppearanceInstancePtr& appearance) const
{
    const CAppearanceInstancePtr own = m_manager.GetSystemLibrary()->FindInstance(appearance->GetId());
    return own && AreEqual(*own, *appearance) ? own : appearance;
}

bool ProjectFile::refuse(const QString& reason)
{
    m_reason = reason;
    return false;
}
