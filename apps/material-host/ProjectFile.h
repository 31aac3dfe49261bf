#pragma once

#include "ProjectContent.h"

#include <kiv/AppearanceLibraryManager.h>

#include <QByteArray>
#include <QJsonObject>

/// The format of project files (UTF-8 JSON):
///
///     {"format": "material-project", "version": 1, "building": {...},
///      "materials": [{"source": "project" | "reference", "document": "<appearance document>"}],
///      "assignments": {"<element id>": <index into materials>}}
///
/// A document is kept as text: taken apart and put together again it would no longer have the bytes by whose digest
/// libraries tell it from others. "materials" and "assignments" may be missing, as in a sample; an element without
/// assignment has its start material.
class ProjectFile {
public:
    static constexpr int Version = 1;
    static constexpr int MaxBytes = 64 * 1024 * 1024;

    /// The manager is borrowed. `language`: see BuildingReader.
    ProjectFile(const kiv::CAppearanceLibraryManager& manager, QString language)
        : m_manager(manager), m_language(std::move(language))
    {
    }

    QByteArray write(const ProjectContent& content) const;
    /// False with reason(), leaving the content alone, for anything that is not a project through and through.
    bool read(const QByteArray& bytes, ProjectContent& content);
    const QString& reason() const { return m_reason; }

private:
    bool readHead(const QByteArray& bytes, QJsonObject& root);
    bool readMaterials(const QJsonArray& json, ProjectContent& content);
    bool readAssignments(const QJsonObject& json, ProjectContent& content);
    kiv::CAppearanceInstancePtr known(const kiv::CAppearanceInstancePtr& appearance) const;
    bool refuse(const QString& reason);

    const kiv::CAppearanceLibraryManager& m_manager;
    QString m_language;
    std::vector<kiv::CAppearanceInstancePtr> m_materials;  // of the file being read, in its order
    QString m_reason;
};
