#include "DynamicWidget.h"

#include "ColorCtrl.h"
#include "GroupBoxCtrl.h"
#include "ImageCtrl.h"
#include "ImagePreviewerCtrl.h"
#include "LineEditCtrl.h"
#include "SpinBoxCtrl.h"

#include <GlobalConfig.h>
#include <MaterialConstants.h>
#include <PlainTip.h>

#include <kiv/AppearanceTemplate.h>

#include <glenox/StdStringTrans.h>

#include <boost/lexical_cast.hpp>

#include <QHBoxLayout>
#include <QLabel>

using kiv::CAppearanceUIElement;
using kiv::String;

namespace {

constexpr int EntryHeight = 30;  // of one child of a group
constexpr int GroupHeight = 45;  // of its title and margins
constexpr int LabelWidth = 84;
constexpr int NumberHeight = 20;
const QSize ImageSize(150, 60);

QString toQt(const String& text)
{
    return QString::fromLocal8Bit(text.c_str());
}

}  // namespace

CDynamicWidget::CDynamicWidget(kiv::CAppearanceLibraryManager& manager, kiv::CMaterialLibrary& library, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_library(library)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(3, 3, 3, 3);
    layout->setSpacing(6);
}

void CDynamicWidget::SetAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    if (appearance == m_appearance)
        return;
    m_isBuilt = false;
    m_appearance = appearance;
    if (appearance)
        m_manager.BuildUI(appearance->GetCategory(), *this);
    m_isBuilt = true;
}

// ---- the elements

// The panel is the one of the category, which need not be the appearance's own type: then a key may hold anything.
template <typename T>
kiv::CPropertyValuePtr CDynamicWidget::valueOf(const CAppearanceUIElement& element) const
{
    const kiv::CPropertyValuePtr value = m_appearance->FindProperty(element.GetAttribute("parameter"));
    return value && value->TryGet<T>() ? value : nullptr;
}

bool CDynamicWidget::BuildNameLine(const CAppearanceUIElement& element, const String& parentGroup)
{
    if (!GMaterialUI::CGlobalConfig::isMaterialNameEditable())
        return true;
    auto* control = new CLineEditCtrl(toQt(element.GetAttribute("id")), this);
    control->SetValue(valueOf<std::string>(element));
    control->setCursorPosition(0);
    connect(control, SIGNAL(ChangeProperty(const kiv::String&, const kiv::CPropertyValuePtr&)), this,
            SLOT(OnPropertyChanged(const kiv::String&, const kiv::CPropertyValuePtr&)));
    addRow(element, parentGroup, *control);
    return true;
}

bool CDynamicWidget::BuildGroup(const CAppearanceUIElement& element, const String& parentGroup)
{
    auto* control = new CGroupBoxCtrl(toQt(element.GetAttribute("id")), this);
    control->setTitle(PlainCaption(shownText(element.GetAttribute("label"))));
    if (element.GetAttribute("checkable") == "1") {
        control->setCheckable(true);
        control->SetValue(valueOf<bool>(element));
        connect(control, SIGNAL(ChangeProperty(const kiv::String&, const kiv::CPropertyValuePtr&)), this,
                SLOT(OnPropertyChanged(const kiv::String&, const kiv::CPropertyValuePtr&)));
    }
    control->setFixedHeight(EntryHeight * int(element.GetStackPanels().size()) + GroupHeight);
    describe(element, *control);
    layoutOf(parentGroup).addWidget(control);
    return true;
}

bool CDynamicWidget::BuildColor(const CAppearanceUIElement& element, const String& parentGroup)
{
    auto* control = new CColorCtrl(toQt(element.GetAttribute("id")), this);
    control->setShowToolTip(false);
    control->SetValue(valueOf<kiv::CVec4<float>>(element));
    connect(control, SIGNAL(ChangeProperty(const kiv::String&, const kiv::CPropertyValuePtr&)), this,
            SLOT(OnPropertyChanged(const kiv::String&, const kiv::CPropertyValuePtr&)));
    addRow(element, parentGroup, *control);
    return true;
}

bool CDynamicWidget::BuildImage(const CAppearanceUIElement& element, const String& parentGroup)
{
    const String id = element.GetAttribute("id");
    auto* control = new CImageCtrl(toQt(id), this);
    if (id == APPEARANCE_BUMP_TEXTURE) {
        control->AddNormalMapButton();
        connect(control, SIGNAL(GenerateNormalMap(CImageCtrl*)), this, SLOT(OnGenNormalMap(CImageCtrl*)));
    }
    if (const auto texture = textureOf(element.GetAttribute("parameter"))) {
        control->SetTypedValue(m_manager.ResolvePath(texture->GetTextureFile()));
        control->GetThumbnail().SetDefaultFolder(
            kiv::GStdStringTrans::WStringToString(m_manager.GetTextureLibraryPath()));
    }
    control->setMinimumSize(ImageSize);
    control->setMaximumHeight(ImageSize.height());
    connect(control, SIGNAL(ChangeProperty(const kiv::String&, const kiv::CPropertyValuePtr&)), this,
            SLOT(OnImageChanged(const kiv::String&, const kiv::CPropertyValuePtr&)));
    connect(control, SIGNAL(ShowTextureEditor(const QString&)), this, SLOT(OnShowTextureEditor(const QString&)));
    addRow(element, parentGroup, *control);
    return true;
}

bool CDynamicWidget::BuildNumber(const CAppearanceUIElement& element, const String& parentGroup)
{
    auto* control = new CSpinBoxCtrl(toQt(element.GetAttribute("id")), this);
    setRange(element, *control);
    if (element.HasAttribute("unit"))
        control->setSuffix(" " + shownText(element.GetAttribute("unit")));
    control->SetValue(valueOf<float>(element));
    control->setMinimumHeight(NumberHeight);
    connect(control, SIGNAL(ChangeProperty(const kiv::String&, const kiv::CPropertyValuePtr&)), this,
            SLOT(OnPropertyChanged(const kiv::String&, const kiv::CPropertyValuePtr&)));
    addRow(element, parentGroup, *control);
    return true;
}

// Of a number without a range the template may still know which values make sense; these are shown as they are.
void CDynamicWidget::setRange(const CAppearanceUIElement& element, CSpinBoxCtrl& control) const
{
    const String range = element.GetAttribute("range");
    if (!range.empty()) {
        const auto separator = range.find('~');
        const auto high = separator == String::npos ? String() : range.substr(separator + 1);
        control.SetPropertyRange(boost::lexical_cast<double>(range.substr(0, separator)),
                                 boost::lexical_cast<double>(high));
        return;
    }
    const auto type = m_appearance->GetTemplate();
    const auto* parameter = type ? type->FindParameter(element.GetAttribute("parameter")) : nullptr;
    if (parameter && parameter->rangeMin && parameter->rangeMax) {
        control.setRange(*parameter->rangeMin, *parameter->rangeMax);
        control.setSingleStep((*parameter->rangeMax - *parameter->rangeMin) / 100);
    }
}

bool CDynamicWidget::BuildSeparator(const CAppearanceUIElement& /*element*/, const String& /*parentGroup*/)
{
    return true;
}

bool CDynamicWidget::BuildLabel(const CAppearanceUIElement& /*element*/, const String& /*parentGroup*/)
{
    return true;
}

// ---- rows

QBoxLayout& CDynamicWidget::layoutOf(const String& group) const
{
    const auto* box = group.empty() ? nullptr : findChild<QGroupBox*>(toQt(group));
    return *static_cast<QBoxLayout*>(box ? box->layout() : layout());
}

void CDynamicWidget::addRow(const CAppearanceUIElement& element, const String& parentGroup, QWidget& control)
{
    const QString text = shownText(element.GetAttribute("label"));
    auto* label = new QLabel(PlainCaption(text), this);
    label->setTextFormat(Qt::PlainText);
    label->setMinimumWidth(LabelWidth);
    label->setBuddy(&control);
    (control.focusProxy() ? control.focusProxy() : &control)->setAccessibleName(text);
    describe(element, control);
    label->setToolTip(control.toolTip());
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(label);
    row->addWidget(&control, 1);
    layoutOf(parentGroup).addLayout(row);
}

void CDynamicWidget::describe(const CAppearanceUIElement& element, QWidget& control) const
{
    if (element.HasAttribute("tooltip"))
        control.setToolTip(PlainTip(shownText(element.GetAttribute("tooltip"))));
}

QString CDynamicWidget::shownText(const String& stored) const
{
    return toQt(m_manager.LocalizeUiString(stored));
}
