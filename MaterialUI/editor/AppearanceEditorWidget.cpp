#include "AppearanceEditorWidget.h"

CAppearanceEditorWidget::CAppearanceEditorWidget(kiv::CAppearanceLibraryManager& manager, QWidget* parent)
    : QWidget(parent), m_manager(manager)
{
}

void CAppearanceEditorWidget::SetAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    if (appearance == m_appearance)
        return;
    m_appearance = appearance;
    Refresh();
}
