#pragma once

#include "ProjectContent.h"

#include <kiv/MaterialLibrary.h>

#include <QObject>
#include <QUndoStack>

enum class MaterialSource {
    Project,  ///< the project library
    Library,  ///< the system library or the favourites
    Gone,     ///< the project library or another's, which no longer has it; the element has it alone
};

/// The open project: the building, the project library ("Customer Library" of the material library) and the material of
/// every element. Assignments are undoable.
class ProjectDocument : public QObject {
    Q_OBJECT

public:
    using Assignments = QMap<QString, kiv::CAppearanceInstancePtr>;  ///< material by element

    /// The library is borrowed. `language`: in which element names are shown.
    ProjectDocument(kiv::CMaterialLibrary& library, QString language, QObject* parent = nullptr);

    /// Starts the sample at `samplePath` as a project without file. False with reason().
    bool startNew(const QString& samplePath);
    /// False with reason(); the open project then stays as it is.
    bool open(const QString& path);
    /// Writes beside the file and renames into place. False with reason(), keeping the old file.
    bool save(const QString& path);
    const QString& reason() const { return m_reason; }

    const QString& path() const { return m_path; }  ///< empty for a project that was never saved
    bool isModified() const { return !m_undo.isClean() || m_libraryChanged; }
    QUndoStack& undoStack() { return m_undo; }

    const Building& building() const { return m_building; }
    kiv::CAppearanceInstancePtr materialOf(const QString& elementId) const { return m_assignments.value(elementId); }
    const Assignments& assignments() const { return m_assignments; }
    /// Gives the element another material, as one step that can be undone. Nothing happens when it has it already.
    void assign(const QString& elementId, const kiv::CAppearanceInstancePtr& material);
    /// The same for several elements, all in one step.
    void assign(const Assignments& materials);
    /// A material of the project was deleted and has come back as this object: the elements that have it take it.
    void relink(const kiv::CAppearanceInstancePtr& material);
    /// Puts back what the elements had, apart from the undo stack: for what was only relinked since.
    void restore(const Assignments& assignments);
    /// What the project library now has under the id of a material that can be edited; otherwise the material itself.
    kiv::CAppearanceInstancePtr current(const kiv::CAppearanceInstancePtr& material) const;

    MaterialSource sourceOf(const kiv::CAppearanceInstancePtr& material) const;
    bool isInProjectLibrary(const kiv::CAppearanceInstancePtr& material) const;
    /// Compares the project library with what was saved: the material dialog may have changed it.
    void noticeLibraryChanges();

signals:
    void materialChanged(const QString& elementId);
    /// Another project is open.
    void reset();
    void modifiedChanged();

private:
    friend class AssignMaterialCommand;

    bool load(const QString& path);
    void take(const ProjectContent& content, const QString& path);
    void fillProjectLibrary(const ProjectContent& content);
    void assignStartMaterials();
    kiv::CAppearanceInstancePtr startMaterial(const QString& systemId);
    ProjectContent content() const;
    QByteArray libraryText() const;
    void setAssigned(const QString& elementId, const kiv::CAppearanceInstancePtr& material);
    bool refuse(const QString& path, const QString& reason);

    kiv::CMaterialLibrary& m_library;
    QString m_language;
    Building m_building;
    Assignments m_assignments;
    QUndoStack m_undo;
    QString m_path;
    QString m_reason;
    QByteArray m_savedLibrary;
    bool m_libraryChanged = false;
};
