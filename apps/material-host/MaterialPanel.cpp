#include "MaterialPanel.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int Width = 226;
const QSize SwatchSize(202, 150);

QLabel* makeTitle(QWidget* parent)
{
    auto* label = new QLabel(parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    label->setFont(font);
    label->setWordWrap(true);
    return label;
}

}  // namespace

MaterialPanel::MaterialPanel(const kiv::CAppearanceLibraryManager& manager, const MaterialFill& fill, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_fill(fill), m_element(makeTitle(this)), m_swatch(new QLabel(this)),
      m_button(new QPushButton(tr("&Materials..."), this))
{
    setMinimumWidth(Width);  // and not as wide as some material's tags would have it
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);
    layout->addWidget(m_element);
    layout->addWidget(m_swatch);
    m_details = new QWidget(this);
    auto* form = new QFormLayout(m_details);
    form->setContentsMargins(0, 0, 0, 0);
    form->setRowWrapPolicy(QFormLayout::DontWrapRows);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
    form->setVerticalSpacing(8);
    m_name = addRow(*form, tr("Material"));
    m_category = addRow(*form, tr("Type"));
    m_repeat = addRow(*form, tr("Repeat"));
    m_opacity = addRow(*form, tr("Opacity"));
    m_source = addRow(*form, tr("From"));
    m_tags = addRow(*form, tr("Tags"));
    layout->addWidget(m_details);
    m_button->setObjectName("materialButton");
    m_button->setMinimumHeight(32);
    layout->addWidget(m_button);
    layout->addStretch();
    connect(m_button, &QPushButton::clicked, this, &MaterialPanel::libraryRequested);
    show({}, nullptr, MaterialSource::Library);
}

QLabel* MaterialPanel::addRow(QFormLayout& form, const QString& title)
{
    auto* caption = new QLabel(title, this);
    caption->setStyleSheet("color: #6b7480");
    auto* value = new QLabel(this);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form.addRow(caption, value);
    return value;
}

QSize MaterialPanel::sizeHint() const
{
    return {Width, 400};
}

void MaterialPanel::show(const QString& elementName, const kiv::CAppearanceInstancePtr& material, MaterialSource source)
{
    m_element->setText(material ? elementName : tr("Nothing selected"));
    m_button->setEnabled(bool(material));
    m_details->setVisible(bool(material));
    showSwatch(material);
    m_name->setText(material ? shown(material->GetName()) : QString());
    m_category->setText(material ? categoryText(material->GetCategory()) : QString());
    m_repeat->setText(material ? repeatText(*material) : QString());
    m_opacity->setText(material ? opacityText(*material) : QString());
    m_source->setText(material ? sourceText(source) : QString());
    m_tags->setText(material ? QString::fromLocal8Bit(material->GetTags().c_str()) : QString());
}

QString MaterialPanel::sourceText(MaterialSource source)
{
    switch (source) {
    case MaterialSource::Project:
        return tr("This project");
    case MaterialSource::Gone:
        return tr("No longer in the project");
    default:
        return tr("Material library");
    }
}

void MaterialPanel::showSwatch(const kiv::CAppearanceInstancePtr& material)
{
    m_swatch->setMinimumHeight(SwatchSize.height());
    if (material)
        m_swatch->setPixmap(MaterialSwatch(m_fill).picture(*material, SwatchSize, devicePixelRatioF()));
    else
        m_swatch->setText(tr("Click a part of the building."));
}

QString MaterialPanel::shown(const kiv::String& stored) const
{
    return QString::fromLocal8Bit(m_manager.LocalizeAppearanceString(stored).c_str());
}

QString MaterialPanel::categoryText(const kiv::String& category) const
{
    QStringList levels;
    for (const QString& level : QString::fromLocal8Bit(category.c_str()).split('/', Qt::SkipEmptyParts))
        levels.append(shown(level.toLocal8Bit().toStdString()));
    return levels.join(" / ");
}

QString MaterialPanel::repeatText(const kiv::CAppearanceInstance& material) const
{
    const QSizeF size = m_fill.repeatSize(material);
    if (size.isEmpty())
        return tr("plain colour");
    return tr("%1 × %2 m").arg(size.width(), 0, 'g', 4).arg(size.height(), 0, 'g', 4);
}

QString MaterialPanel::opacityText(const kiv::CAppearanceInstance& material) const
{
    return tr("%1 %").arg(qRound(material.GetTransparent() * 100));
}
