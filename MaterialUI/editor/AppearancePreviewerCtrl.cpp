#include "AppearancePreviewerCtrl.h"

#include "BackgroundMenu.h"
#include "ui_AppearancePreviewerCtrl.h"

#include <kiv/StateSet.h>

#include <QStyle>

#include <exception>

namespace {

using Level = kiv::CAppearanceLibraryManager::EnShaderLevelOfDetail;

struct Shading {
    const char* text;
    Level level;
};

// Known by their texts. The first one has no entry of its own, but a host may add one.
const Shading shadings[] = {{"No Shader", kiv::CAppearanceLibraryManager::ShaderNone},
                            {"Default Shader", kiv::CAppearanceLibraryManager::ShaderDefault},
                            {"Fast Shader", kiv::CAppearanceLibraryManager::ShaderFast}};

Level levelOf(const QString& text)
{
    for (const Shading& shading : shadings) {
        if (text == QLatin1String(shading.text))
            return shading.level;
    }
    return kiv::CAppearanceLibraryManager::ShaderFast;
}

QString textOf(Level level)
{
    for (const Shading& shading : shadings) {
        if (level == shading.level)
            return QString::fromLatin1(shading.text);
    }
    return {};
}

/// The prepared surroundings are for the preview: whoever translates for the building has none.
class PreEnvironmentMap {
public:
    explicit PreEnvironmentMap(kiv::CAppearanceLibraryManager& manager) : m_manager(manager)
    {
        m_manager.UsePreEnvironmentMap(true);
    }
    ~PreEnvironmentMap() { m_manager.UsePreEnvironmentMap(false); }
    PreEnvironmentMap(const PreEnvironmentMap&) = delete;
    PreEnvironmentMap& operator=(const PreEnvironmentMap&) = delete;

private:
    kiv::CAppearanceLibraryManager& m_manager;
};

// What cannot be translated leaves the state set new: the body is then drawn plain, and not with the appearance before.
void translate(kiv::CAppearanceLibraryManager& manager, const kiv::CAppearanceInstancePtr& appearance,
               kiv::CStateSet& stateSet)
{
    const PreEnvironmentMap environment(manager);
    try {
        if (!manager.Translate(appearance, &stateSet))
            stateSet.Clear();
    } catch (const std::exception&) {
        stateSet.Clear();
    }
}

}  // namespace

CAppearancePreviewerCtrl::CAppearancePreviewerCtrl(kiv::CAppearanceLibraryManager& manager, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_ui(std::make_unique<Ui::CAppearancePreviewerCtrl>())
{
    m_ui->setupUi(this);
    setUpShapes();
    const QString hint = m_ui->colorButton->toolTip();
    m_ui->colorButton->setShowName(false);
    m_ui->colorButton->setShowToolTip(false);
    m_ui->colorButton->setToolTip(hint);
    hideActions();
    setUpShading();
    connectSignals();
    setUpScene();
}

CAppearancePreviewerCtrl::~CAppearancePreviewerCtrl() = default;

void CAppearancePreviewerCtrl::setUpShapes()
{
    m_ui->shapeCombo->setStyleSheet(QStringLiteral("background: rgb(255, 255, 255);color:black;"));
    int number = 0;
    for (const char* shape : {"Cylinder", "Sphere", "Box", "Surface"})
        m_ui->shapeCombo->addItem(QString::fromLatin1(shape), number++);
}

void CAppearancePreviewerCtrl::setUpShading()
{
    m_ui->shadingCombo->addItem(QStringLiteral("Fast Shader"));
    m_ui->shadingCombo->addItem(QStringLiteral("Default Shader"));
    m_ui->shadingCombo->setCurrentIndex(m_ui->shadingCombo->findText(textOf(m_manager.GetShaderLevelOfDetail())));
}

void CAppearancePreviewerCtrl::hideActions()
{
    m_ui->colorButton->hide();
    const auto prepare = [this](QToolButton* button, QStyle::StandardPixmap icon) {
        button->setIcon(style()->standardIcon(icon));
        button->hide();
    };
    prepare(m_ui->applyButton, QStyle::SP_DialogApplyButton);
    prepare(m_ui->saveButton, QStyle::SP_DialogSaveButton);
    prepare(m_ui->addButton, QStyle::SP_FileIcon);
    prepare(m_ui->deleteButton, QStyle::SP_TrashIcon);
}

void CAppearancePreviewerCtrl::connectSignals()
{
    connect(m_ui->shapeCombo, SIGNAL(currentTextChanged(const QString&)), this,
            SLOT(currentIndexChanged(const QString&)));
    connect(m_ui->shadingCombo, SIGNAL(currentTextChanged(const QString&)), this,
            SLOT(currentLodChanged(const QString&)));
    connect(m_ui->colorButton, SIGNAL(colorChanged()), this, SLOT(OnChangeBackgroundColor()));
    connect(m_ui->saveButton, SIGNAL(pressed()), this, SLOT(OnSaveAppearance()));
}

void CAppearancePreviewerCtrl::setUpScene()
{
    m_ui->colorButton->setColor(m_ui->sceneWidget->GetBackgroundColor());
    m_ui->sceneWidget->SetSkyBoxFolder(m_manager.GetTextureLibraryPath() + L"/skybox/");
    m_ui->sceneWidget->SetPlaceholder(m_ui->placeholder);
    auto* backgrounds = new CBackgroundMenu(*m_ui->colorButton, this);
    connect(backgrounds, &CBackgroundMenu::SkyShown, m_ui->sceneWidget, &CSceneWidget::ShowSky);
    m_ui->backgroundButton->setMenu(backgrounds);
}

CSceneWidget* CAppearancePreviewerCtrl::GetSceneWidget() const
{
    return m_ui->sceneWidget;
}

QToolButton* CAppearancePreviewerCtrl::GetApplyButton() const
{
    return m_ui->applyButton;
}

void CAppearancePreviewerCtrl::SetAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    m_appearance = appearance;
    refresh();
}

void CAppearancePreviewerCtrl::refresh()
{
    if (!m_appearance)
        return;
    const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    translate(m_manager, m_appearance, *stateSet);
    m_ui->sceneWidget->SetStateSet(stateSet.get());
}

void CAppearancePreviewerCtrl::currentIndexChanged(const QString& text)
{
    m_ui->sceneWidget->SwitchScene(text);
}

void CAppearancePreviewerCtrl::currentLodChanged(const QString& text)
{
    const Level level = levelOf(text);
    m_manager.SetShaderLevelOfDetail(level);
    refresh();
    emit InitcurrentLod(level);
}

void CAppearancePreviewerCtrl::OnChangeBackgroundColor()
{
    m_ui->sceneWidget->SetBackgroundColor(m_ui->colorButton->color());
}

void CAppearancePreviewerCtrl::OnShowBrowser(bool bShow)
{
    for (QToolButton* button : {m_ui->saveButton, m_ui->addButton, m_ui->deleteButton})
        button->setVisible(bShow);
}

void CAppearancePreviewerCtrl::OnSaveAppearance()
{
    emit SaveAppearance(m_appearance);
}
