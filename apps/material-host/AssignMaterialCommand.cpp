#include "AssignMaterialCommand.h"

AssignMaterialCommand::AssignMaterialCommand(ProjectDocument& document, const QString& elementId,
                                             const kiv::CAppearanceInstancePtr& material)
    : m_document(document), m_elementId(elementId), m_before(document.materialOf(elementId)), m_after(material)
{
    const BuildingElement* element = document.building().find(elementId);
    setText(ProjectDocument::tr("Material of %1").arg(element ? element->name : elementId));
}

void AssignMaterialCommand::undo()
{
    m_document.setAssigned(m_elementId, m_before);
}

void AssignMaterialCommand::redo()
{
    m_document.setAssigned(m_elementId, m_after);
}
