#include "TextureEditorDlg.h"

#include "ui_TextureEditorDlg.h"

#include <PlainTip.h>

#include <kiv/AppearanceTranslator.h>
#include <kiv/StateSet.h>
#include <kiv/TextureTransform.h>
#include <kiv/system/StoredPath.h>

#include <QSignalBlocker>

#include <cmath>
#include <exception>

namespace {

const char* const RotationKey = "rotation";
const char* const ScaleKey = "scale";
const char* const OffsetKey = "offset";
const char* const TransformKey = "transform";

const char* const Repeats[] = {QT_TRANSLATE_NOOP("CTextureEditorDlg", "Repeat"),
                               QT_TRANSLATE_NOOP("CTextureEditorDlg", "Mirrored repeat"),
                               QT_TRANSLATE_NOOP("CTextureEditorDlg", "Clamp")};

float withSignOf(double size, float signedSize)
{
    return std::copysign(float(size), signedSize);
}

}  // namespace

CTextureEditorDlg::CTextureEditorDlg(kiv::CAppearanceLibraryManager& manager,
                                     const kiv::CAppearanceInstancePtr& texture, const QString& unit, QWidget* parent)
    : QDialog(parent), m_manager(manager), m_texture(texture), m_ui(std::make_unique<Ui::CTextureEditorDlg>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    showUnit(unit);
    fillRepeats();
    fill();
    connectSignals();
    m_preview = manager.CreateAppearanceInstance(manager.FindTemplate("SimpleTexture"), "TexturePreview");
    if (m_preview)
        m_preview->SetProperty("texture", kiv::MakePropertyValue(m_texture));
    showTexture();
}

CTextureEditorDlg::~CTextureEditorDlg() = default;

// ---- what is shown

void CTextureEditorDlg::showUnit(const QString& unit)
{
    m_ui->widthUnit->setText(unit);
    m_ui->heigthUnit->setText(unit);
    const QString drawn = QStringLiteral("(m)");
    for (QLabel* caption : {m_ui->labelWidth, m_ui->labelHeight, m_ui->labelOffsetX, m_ui->labelOffsetY})
        caption->setText(caption->text().replace(drawn, "(" + unit + ")"));
}

void CTextureEditorDlg::fillRepeats()
{
    for (QComboBox* combo : {m_ui->repeatHorizontal, m_ui->repeatVertical}) {
        for (const char* text : Repeats)
            combo->addItem(tr(text));
    }
}

void CTextureEditorDlg::fill()
{
    const QString file = QString::fromLocal8Bit(m_texture->GetTextureFile().c_str());
    m_ui->labelSource->setText(QString::fromStdWString(kiv::system::LastSegment(file.toStdWString())));
    m_ui->labelSource->setToolTip(PlainTip(file));
    const Pair scale = pair(ScaleKey, 1);
    const Pair offset = pair(OffsetKey, 0);
    m_ui->rotation->setValue(double(m_texture->ValueOr<float>(RotationKey, 0)));
    m_ui->sampleWidth->setValue(std::abs(double(scale.x)));
    m_ui->sampleHeight->setValue(std::abs(double(scale.y)));
    m_ui->checkBox_FlipH->setChecked(std::signbit(scale.x));
    m_ui->checkBox_FlipV->setChecked(std::signbit(scale.y));
    m_ui->offsetX->setValue(double(offset.x));
    m_ui->offsetY->setValue(double(offset.y));
    m_ui->repeatHorizontal->setCurrentIndex(qBound(0, m_texture->ValueOr<int>("repeat_h", 0), 2));
    m_ui->repeatVertical->setCurrentIndex(qBound(0, m_texture->ValueOr<int>("repeat_v", 0), 2));
}

void CTextureEditorDlg::connectSignals()
{
    connect(m_ui->rotation, SIGNAL(valueChanged(double)), this, SLOT(OnChangeRotation(double)));
    connect(m_ui->offsetX, SIGNAL(valueChanged(double)), this, SLOT(OnChangeOffsetX(double)));
    connect(m_ui->offsetY, SIGNAL(valueChanged(double)), this, SLOT(OnChangeOffsetY(double)));
    connect(m_ui->sampleWidth, SIGNAL(valueChanged(double)), this, SLOT(OnChangeSampleWidth(double)));
    connect(m_ui->sampleHeight, SIGNAL(valueChanged(double)), this, SLOT(OnChangeSampleHeight(double)));
    connect(m_ui->checkBox_FlipH, SIGNAL(clicked(bool)), this, SLOT(OnFilpH(bool)));
    connect(m_ui->checkBox_FlipV, SIGNAL(clicked(bool)), this, SLOT(OnFilpV(bool)));
    connect(m_ui->repeatHorizontal, SIGNAL(currentIndexChanged(int)), this, SLOT(OnChangeRepeat()));
    connect(m_ui->repeatVertical, SIGNAL(currentIndexChanged(int)), this, SLOT(OnChangeRepeat()));
    connect(m_ui->pushButtonOk, SIGNAL(pressed()), this, SLOT(OnApplyTexture()));
}

// ---- what is changed

void CTextureEditorDlg::OnChangeRotation(double degrees)
{
    m_texture->SetProperty(RotationKey, kiv::MakePropertyValue(float(degrees)));
    place();
}

void CTextureEditorDlg::OnChangeOffsetX(double offset)
{
    setPair(OffsetKey, {float(offset), pair(OffsetKey, 0).y});
}

void CTextureEditorDlg::OnChangeOffsetY(double offset)
{
    setPair(OffsetKey, {pair(OffsetKey, 0).x, float(offset)});
}

void CTextureEditorDlg::OnChangeSampleWidth(double width)
{
    const Pair scale = pair(ScaleKey, 1);
    setPair(ScaleKey, {withSignOf(width, scale.x), scale.y});
}

void CTextureEditorDlg::OnChangeSampleHeight(double height)
{
    const Pair scale = pair(ScaleKey, 1);
    setPair(ScaleKey, {scale.x, withSignOf(height, scale.y)});
}

void CTextureEditorDlg::OnFilpH(bool /*mirrored*/)
{
    const Pair scale = pair(ScaleKey, 1);
    setPair(ScaleKey, {-scale.x, scale.y});
}

void CTextureEditorDlg::OnFilpV(bool /*mirrored*/)
{
    const Pair scale = pair(ScaleKey, 1);
    setPair(ScaleKey, {scale.x, -scale.y});
}

void CTextureEditorDlg::OnChangeRepeat()
{
    m_texture->SetProperty("repeat_h", kiv::MakePropertyValue(m_ui->repeatHorizontal->currentIndex()));
    m_texture->SetProperty("repeat_v", kiv::MakePropertyValue(m_ui->repeatVertical->currentIndex()));
    place();
}

void CTextureEditorDlg::OnApplyTexture()
{
    accept();
}

CTextureEditorDlg::Pair CTextureEditorDlg::pair(const char* key, float otherwise) const
{
    return m_texture->ValueOr<Pair>(key, Pair(otherwise, otherwise));
}

void CTextureEditorDlg::setPair(const char* key, const Pair& value)
{
    m_texture->SetProperty(key, kiv::MakePropertyValue(value));
    place();
}

void CTextureEditorDlg::place()
{
    const auto transform =
        kiv::TextureTransform(m_texture->ValueOr<float>(RotationKey, 0), pair(ScaleKey, 1), pair(OffsetKey, 0));
    m_texture->SetProperty(TransformKey, kiv::MakePropertyValue(transform));
    showTexture();
}

// What cannot be translated is drawn plain, and not as it was before.
void CTextureEditorDlg::showTexture()
{
    const GRefPtr<kiv::CStateSet> stateSet(new kiv::CStateSet);
    try {
        m_manager.CreateTranslator(stateSet.get())->Translate(m_preview);
    } catch (const std::exception&) {
        stateSet->Clear();
    }
    m_ui->sceneViewer->SetStateSet(stateSet.get());
}
