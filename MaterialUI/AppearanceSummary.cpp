#include "AppearanceSummary.h"

#include <MaterialConstants.h>

#include <kiv/system/StoredPath.h>

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int PanelWidth = 290;

const char* const PanelStyle = R"(
QLabel { color: #1f2328; }
QLabel#SummaryName { font-size: 12pt; font-weight: bold; }
QLabel#SummaryCategory, QLabel#SummaryTitle { color: #57606a; }
)";

QColor toColor(const kiv::CVec4<float>& color)
{
    const auto part = [](float value) { return qBound(0.0, double(value), 1.0); };
    return QColor::fromRgbF(part(color.x), part(color.y), part(color.z), part(color.w));
}

QString numberText(const kiv::CAppearanceInstance& appearance, const kiv::String& key)
{
    const kiv::CPropertyValuePtr value = appearance.FindProperty(key);
    const float* number = value ? value->TryGet<float>() : nullptr;
    return number ? QString::number(double(*number), 'g', 4) : QString();
}

QString percentText(const kiv::CAppearanceInstance& appearance, const kiv::String& key)
{
    const kiv::CPropertyValuePtr value = appearance.FindProperty(key);
    const float* number = value ? value->TryGet<float>() : nullptr;
    return number ? QStringLiteral("%1 %").arg(qRound(double(*number) * 100)) : QString();
}

QString colorText(const kiv::CAppearanceInstance& appearance)
{
    const QString name = toColor(appearance.GetDiffuse()).name(QColor::HexRgb);
    return QStringLiteral("<span style=\"color:%1\">■</span> %2").arg(name, name.toUpper());
}

QLabel* makeLabel(QWidget* parent, const char* name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

}  // namespace

CAppearanceSummary::CAppearanceSummary(kiv::CAppearanceLibraryManager& manager, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_name(makeLabel(this, "SummaryName")),
      m_category(makeLabel(this, "SummaryCategory")), m_applyButton(new QPushButton(tr("应用"), this))
{
    setFixedWidth(PanelWidth);
    setStyleSheet(PanelStyle);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    layout->addLayout(buildHeading());
    layout->addLayout(buildRows());
    layout->addStretch();
    ShowAppearance(nullptr);
}

QLayout* CAppearanceSummary::buildHeading()
{
    m_applyButton->setObjectName(QStringLiteral("pushButtonApply"));
    m_applyButton->setToolTip(tr("将此材质再次应用于所选构件"));
    m_applyButton->setAutoDefault(false);
    m_applyButton->setFixedWidth(64);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_name);
    texts->addWidget(m_category);
    auto* heading = new QHBoxLayout;
    heading->addLayout(texts, 1);
    heading->addWidget(m_applyButton, 0, Qt::AlignTop);
    return heading;
}

QFormLayout* CAppearanceSummary::buildRows()
{
    auto* form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(4);
    const auto percent = [](const kiv::String& key) {
        return [key](const kiv::CAppearanceInstance& appearance) { return percentText(appearance, key); };
    };
    addRow(*form, tr("颜色"), colorText);
    addRow(*form, tr("粗糙度"), percent(APPEARANCE_ROUGHNESS));
    addRow(*form, tr("金属度"), percent(APPEARANCE_METALLIC));
    addRow(*form, tr("不透明度"), percent(APPEARANCE_TRANSPARENT));
    addRow(*form, tr("折射率"), [](const auto& appearance) { return numberText(appearance, APPEARANCE_IOR); });
    addRow(*form, tr("纹理"), [this](const auto& appearance) { return textureText(appearance); });
    addRow(*form, tr("编辑"),
           [](const auto& appearance) { return appearance.GetEditType() > 0 ? tr("可编辑") : tr("只读"); });
    addRow(*form, tr("标签"),
           [](const auto& appearance) { return QString::fromLocal8Bit(appearance.GetTags().c_str()).toHtmlEscaped(); });
    return form;
}

void CAppearanceSummary::addRow(QFormLayout& form, const QString& title, const RowText& text)
{
    QLabel* titleLabel = makeLabel(this, "SummaryTitle");
    titleLabel->setText(title);
    titleLabel->setWordWrap(false);
    titleLabel->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QLabel* valueLabel = makeLabel(this, "SummaryValue");
    form.addRow(titleLabel, valueLabel);
    m_rows.append({titleLabel, valueLabel, text});
}

void CAppearanceSummary::ShowAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    m_applyButton->setVisible(appearance != nullptr);
    m_name->setText(appearance ? shownText(appearance->GetName()).toHtmlEscaped() : QString());
    m_category->setText(appearance ? categoryText(*appearance).toHtmlEscaped() : tr("请选择材质"));
    for (const Row& row : qAsConst(m_rows)) {
        row.value->setText(appearance ? row.text(*appearance) : QString());
        row.title->setVisible(!row.value->text().isEmpty());
        row.value->setVisible(!row.value->text().isEmpty());
    }
}

QString CAppearanceSummary::categoryText(const kiv::CAppearanceInstance& appearance) const
{
    QStringList levels;
    for (const QString& level : QString::fromLocal8Bit(appearance.GetCategory().c_str()).split('/', Qt::SkipEmptyParts))
        levels.append(shownText(level.toLocal8Bit().toStdString()));
    return levels.join(QStringLiteral(" › "));
}

// "scale" is the real width and height of the picture.
QString CAppearanceSummary::textureText(const kiv::CAppearanceInstance& appearance) const
{
    const kiv::CAppearanceInstancePtr texture = appearance.GetDiffuseTexture();
    if (!appearance.GetUseDiffuseTexture() || !texture || texture->GetTextureFile().empty())
        return {};
    const QString path = QString::fromLocal8Bit(texture->GetTextureFile().c_str());
    const QString name = QString::fromStdWString(kiv::system::LastSegment(path.toStdWString()));
    const kiv::CPropertyValuePtr value = texture->FindProperty("scale");
    const auto* size = value ? value->TryGet<kiv::CVec2<float>>() : nullptr;
    if (!size)
        return name.toHtmlEscaped();
    const QString unit = QString::fromLocal8Bit(m_manager.GetTextureUnit().c_str());
    return QStringLiteral("%1<br>%2 × %3 %4").arg(name.toHtmlEscaped()).arg(size->x).arg(size->y).arg(unit);
}

QString CAppearanceSummary::shownText(const kiv::String& stored) const
{
    return QString::fromLocal8Bit(m_manager.LocalizeAppearanceString(stored).c_str());
}
