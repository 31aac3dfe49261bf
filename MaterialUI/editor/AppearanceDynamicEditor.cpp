#include "AppearanceDynamicEditor.h"

#include "DynamicWidget.h"

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

void CAppearanceDynamicEditor::Refresh()
{
    if (!GetAppearance()) {
        setEnabled(false);
        return;
    }
    const QString focused = focusedProperty();
    replaceControls();
    setEnabled(true);
    if (QWidget* control = focused.isEmpty() ? nullptr : m_controls->findChild<QWidget*>(focused))
        control->setFocus();
}

QString CAppearanceDynamicEditor::focusedProperty() const
{
    const QWidget* focused = m_controls && isEnabled() ? m_controls->focusWidget() : nullptr;
    return focused && focused->hasFocus() ? focused->objectName() : QString();
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
    emit OnAppearancePropertyChanged(GetAppearance(), propId);
}

void CAppearanceDynamicEditor::TransformEditedData(const kiv::String& data)
{
    emit OnTransformEditedData(data);
}
