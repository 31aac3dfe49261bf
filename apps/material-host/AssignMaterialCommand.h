#pragma once

#include "ProjectDocument.h"

#include <QUndoCommand>

/// Gives one element another material. A material of the project that was deleted and has come back meanwhile is found
/// by its id.
class AssignMaterialCommand : public QUndoCommand {
public:
    AssignMaterialCommand(ProjectDocument& document, const QString& elementId,
                          const kiv::CAppearanceInstancePtr& material);

    void undo() override;
    void redo() override;

private:
    ProjectDocument& m_document;
    QString m_elementId;
    kiv::CAppearanceInstancePtr m_before;
    kiv::CAppearanceInstancePtr m_after;
};
