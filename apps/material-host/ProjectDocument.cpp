#include "ProjectDocument.h"

#include "AssignMaterialCommand.h"
#include "ProjectFile.h"

#include <kiv/AppearanceParser.h>
#include <kiv/system/StoredPath.h>

#include <MaterialConstants.h>

using kiv::CAppearanceInstancePtr;

ProjectDocument::ProjectDocument(kiv::CMaterialLibrary& library, QString language, QObject* parent)
    : QObject(parent), m_library(library), m_language(std::move(language))
{
    connect(&m_undo, &QUndoStack::cleanChanged, this, &ProjectDocument::modifiedChanged);
}

bool ProjectDocument::startNew(const QString& samplePath)
{
    if (!load(samplePath))
        return false;
    m_path.clear();
    emit reset();
    return true;
}

bool ProjectDocument::open(const QString& path)
{
    if (!load(path))
        return false;
    emit reset();
    return true;
}

bool ProjectDocument::load(const QString& path)
{
    QByteArray bytes;
    QString reason;
    if (!kiv::system::ReadWholeFile(path, ProjectFile::MaxBytes, bytes, reason))
        return refuse(path, reason);
    ProjectFile file(*m_library.GetMaterialManager(), m_language);
    ProjectContent content;
    if (!file.read(bytes, content))
        return refuse(path, file.reason());
    take(content, path);
    return true;
}

bool ProjectDocument::save(const QString& path)
{
    const ProjectFile file(*m_library.GetMaterialManager(), m_language);
    QString reason;
    if (!kiv::system::WriteWholeFile(path, file.write(content()), reason))
        return refuse(path, reason);
    m_path = path;
    m_savedLibrary = libraryText();
    m_libraryChanged = false;
    m_undo.setClean();
    emit modifiedChanged();
    return true;
}

void ProjectDocument::take(const ProjectContent& content, const QString& path)
{
    m_building = content.building;
    m_assignments = content.assignments;
    m_path = path;
    fillProjectLibrary(content);
    assignStartMaterials();
    m_undo.clear();
    m_savedLibrary = libraryText();
    m_libraryChanged = false;
}

void ProjectDocument::fillProjectLibrary(const ProjectContent& content)
{
    const auto library = std::make_shared<kiv::CAppearanceLibrary>();
    library->SetId(CUSTOMER_LIBRARY_NAME);
    library->SetName(CUSTOMER_LIBRARY_NAME);
    for (const CAppearanceInstancePtr& appearance : content.projectMaterials)
        library->AddInstance(appearance);
    m_library.GetMaterialManager()->DeleteUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    m_library.GetMaterialManager()->AddUserAppearanceLibrary(library);
}

void ProjectDocument::assignStartMaterials()
{
    QMap<QString, CAppearanceInstancePtr> started;  // elements of one start material share one copy
    for (const BuildingElement& element : m_building.elements) {
        if (!element.takesMaterial() || m_assignments.contains(element.id))
            continue;
        if (!started.contains(element.startMaterial))
            started.insert(element.startMaterial, startMaterial(element.startMaterial));
        m_assignments.insert(element.id, started.value(element.startMaterial));
    }
}

CAppearanceInstancePtr ProjectDocument::startMaterial(const QString& systemId)
{
    const auto system = m_library.GetMaterialManager()->GetSystemLibrary()->FindInstance(systemId.toStdString());
    const std::wstring id = QString::fromStdString(kiv::CMaterialLibrary::newGUID()).toStdWString();
    if (system)
        return m_library.CopyMaterial(system, id);
    // The library is not the one that the sample was made for: a plain material that can be edited and replaced.
    return m_library.CopyMaterial(m_library.CreateMaterialInstance(APPEARANCE_TYPE_GENERIC), id);
}

void ProjectDocument::assign(const QString& elementId, const CAppearanceInstancePtr& material)
{
    if (material && material != materialOf(elementId))
        m_undo.push(new AssignMaterialCommand(*this, elementId, material));
}

void ProjectDocument::assign(const Assignments& materials)
{
    Assignments changed;
    for (auto it = materials.begin(); it != materials.end(); ++it)
        if (it.value() && it.value() != materialOf(it.key()))
            changed.insert(it.key(), it.value());
    if (changed.size() > 1)
        m_undo.beginMacro(tr("Materials of %n elements", nullptr, changed.size()));
    for (auto it = changed.begin(); it != changed.end(); ++it)
        assign(it.key(), it.value());
    if (changed.size() > 1)
        m_undo.endMacro();
}

void ProjectDocument::setAssigned(const QString& elementId, const CAppearanceInstancePtr& material)
{
    m_assignments.insert(elementId, current(material));
    emit materialChanged(elementId);
}

void ProjectDocument::relink(const CAppearanceInstancePtr& material)
{
    for (const BuildingElement& element : m_building.elements) {
        const CAppearanceInstancePtr assigned = materialOf(element.id);
        if (assigned != material && current(assigned) == material)
            setAssigned(element.id, material);
    }
}

void ProjectDocument::restore(const Assignments& assignments)
{
    for (auto it = assignments.begin(); it != assignments.end(); ++it)
        if (materialOf(it.key()) != current(it.value()))
            setAssigned(it.key(), it.value());
}

// Those of the libraries cannot be edited. The project may have an import of the same id, which is another material.
CAppearanceInstancePtr ProjectDocument::current(const CAppearanceInstancePtr& material) const
{
    const auto library = m_library.GetMaterialManager()->FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    if (!material || !library || material->GetEditType() < 1)
        return material;
    const CAppearanceInstancePtr now = library->FindInstance(material->GetId());
    return now ? now : material;
}

MaterialSource ProjectDocument::sourceOf(const CAppearanceInstancePtr& material) const
{
    if (isInProjectLibrary(material))
        return MaterialSource::Project;
    return material && material->GetEditType() >= 1 ? MaterialSource::Gone : MaterialSource::Library;
}

bool ProjectDocument::isInProjectLibrary(const CAppearanceInstancePtr& material) const
{
    const auto library = m_library.GetMaterialManager()->FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    return library && material && library->FindInstance(material->GetId()) == material;
}

void ProjectDocument::noticeLibraryChanges()
{
    m_libraryChanged = libraryText() != m_savedLibrary;
    emit modifiedChanged();
}

ProjectContent ProjectDocument::content() const
{
    ProjectContent content{m_building, {}, m_assignments};
    const auto library = m_library.GetMaterialManager()->FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
    if (library)
        for (const auto& entry : *library)
            content.projectMaterials.push_back(entry.second);
    return content;
}

QByteArray ProjectDocument::libraryText() const
{
    const kiv::CAppearanceParser parser(*m_library.GetMaterialManager());
    QByteArray text;
    for (const CAppearanceInstancePtr& appearance : content().projectMaterials)
        text += QByteArray::fromStdString(parser.AppearanceToString(appearance)) + '\n';
    return text;
}

bool ProjectDocument::refuse(const QString& path, const QString& reason)
{
    m_reason = path + "\n" + reason;
    return false;
}
