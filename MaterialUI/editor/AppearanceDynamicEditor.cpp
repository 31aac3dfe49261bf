#include "AppearanceDynamicEditor.h"

#include "DynamicProperty.h"
#include "DynamicWidget.h"

#include <QEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

constexpr int Width = 290;
constexpr int SmallestHeight = 440;
const char* const ControlsStyle = "QPushButton{ background: rgb(240, 240, 240);color:black;font: 9pt \"simsun\";}";

QVBoxLayout* makeLayout(QWidget* parent)
{
    auto* layout = new QVBoxLayout(parent);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    return layout;
}

}  // namespace

CAppearanceDynamicEditor::CAppearanceDynamicEditor(kiv::CAppearanceLibraryManager& manager,
                                                   kiv::CMaterialLibrary& library, QWidget* parent)
    : CAppearanceEditorWidget(manager, parent), m_library(library), m_panel(new QWidget(this))
{
    setFixedWidth(Width);
    setMinimumHeight(SmallestHeight);
    makeLayout(m_panel);
    QVBoxLayout* layout = makeLayout(this);
    layout->addWidget(m_panel);
    layout->addItem(new QSpacerItem(20, 10, QSizePolicy::Minimum, QSizePolicy::Expanding));
    setEnabled(false);
}

// A smallest height of one's own hides what the layout needs, and a long panel would be squeezed into it.
bool CAppearanceDynamicEditor::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest)
        setMinimumHeight(qMax(SmallestHeight, layout()->minimumSize().height()));
    return CAppearanceEditorWidget::event(event);
}

void CAppearanceDynamicEditor::Refresh()
{
    if (!GetAppearance()) {
        setEnabled(false);
        return;
    }
    const Focus focus = focused();
    replaceControls();
    setEnabled(true);
    restore(focus);
}

// A property may have several widgets (picture, buttons): they are told apart by their order.
CAppearanceDynamicEditor::Focus CAppearanceDynamicEditor::focused() const
{
    QWidget* widget = m_controls && isEnabled() ? m_controls->focusWidget() : nullptr;
    if (!widget || !widget->hasFocus())
        return {};
    const auto* line = qobject_cast<QLineEdit*>(widget);
    const int cursor = line ? line->cursorPosition() : 0;
    for (QWidget* control = widget; control != m_controls; control = control->parentWidget())
        if (dynamic_cast<kiv::CDynamicProperty*>(control))
            return {control->objectName(), control->findChildren<QWidget*>().indexOf(widget), cursor};
    return {};
}

void CAppearanceDynamicEditor::restore(const Focus& focus)
{
    auto* control = focus.property.isEmpty() ? nullptr : m_controls->findChild<QWidget*>(focus.property);
    if (!control)
        return;
    QWidget* widget = control->findChildren<QWidget*>().value(focus.part, control);
    widget->setFocus();
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        line->setCursorPosition(focus.cursor);
}

// The old controls may be the ones that brought this about: they go when they have returned, and until then they have
// nothing to write into.
void CAppearanceDynamicEditor::replaceControls()
{
    if (m_controls) {
        m_controls->SetAppearance(nullptr);
        m_controls->hide();
        m_controls->deleteLater();
    }
    m_controls = new CDynamicWidget(m_manager, m_library, this);
    connect(m_controls, SIGNAL(ChangeAppearance(const kiv::String&)), this,
            SLOT(OnChangeAppearance(const kiv::String&)));
    connect(m_controls, SIGNAL(TransformEditedData(const kiv::String&)), this,
            SLOT(TransformEditedData(const kiv::String&)));
    m_controls->SetAppearance(GetAppearance());
    m_controls->setStyleSheet(QString::fromLatin1(ControlsStyle));
    m_panel->layout()->addWidget(m_controls);
}

void CAppearanceDynamicEditor::OnChangeAppearance(const kiv::String& propId)
{
    const kiv::CAppearanceInstancePtr edited = GetAppearance();  // whatever a listener selects meanwhile
    emit OnAppearancePropertyChanged(edited, propId);
}

void CAppearanceDynamicEditor::TransformEditedData(const kiv::String& data)
{
    emit OnTransformEditedData(data);
}
