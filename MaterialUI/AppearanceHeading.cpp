#include "AppearanceHeading.h"

#include <PlainTip.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

const char* const HeadingStyle = R"(
QLabel { color: #1f2328; }
QLabel#AppearanceName { font-size: 12pt; font-weight: bold; }
QLabel#AppearancePlace { color: #57606a; }
)";

QLabel* makeLabel(QWidget* parent, const char* name)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

}  // namespace

CAppearanceHeading::CAppearanceHeading(kiv::CAppearanceLibraryManager& manager, QWidget* parent)
    : QWidget(parent), m_manager(manager), m_name(makeLabel(this, "AppearanceName")),
      m_place(makeLabel(this, "AppearancePlace")), m_applyButton(new QPushButton(tr("应用"), this))
{
    setStyleSheet(HeadingStyle);
    setUpApplyButton();
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_name);
    texts->addWidget(m_place);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 6, 0, 6);
    layout->addLayout(texts, 1);
    layout->addWidget(m_applyButton, 0, Qt::AlignTop);
    ShowAppearance(nullptr);
}

void CAppearanceHeading::setUpApplyButton()
{
    m_applyButton->setObjectName(QStringLiteral("pushButtonApply"));
    m_applyButton->setToolTip(tr("将此材质再次应用于所选构件"));
    m_applyButton->setAutoDefault(false);
    m_applyButton->setFixedWidth(64);
}

void CAppearanceHeading::ShowAppearance(const kiv::CAppearanceInstancePtr& appearance)
{
    m_applyButton->setVisible(appearance != nullptr);
    m_name->setText(appearance ? shownText(appearance->GetName()) : QString());
    m_place->setText(appearance ? placeText(*appearance) : tr("请选择材质"));
    setToolTip(appearance ? PlainTip(QString::fromLocal8Bit(appearance->GetTags().c_str())) : QString());
}

QString CAppearanceHeading::placeText(const kiv::CAppearanceInstance& appearance) const
{
    QStringList levels;
    for (const QString& level : QString::fromLocal8Bit(appearance.GetCategory().c_str()).split('/', Qt::SkipEmptyParts))
        levels.append(shownText(level.toLocal8Bit().toStdString()));
    const QString place = levels.join(QStringLiteral(" › "));
    return appearance.GetEditType() > 0 ? place : tr("%1 · 只读").arg(place);
}

QString CAppearanceHeading::shownText(const kiv::String& stored) const
{
    return QString::fromLocal8Bit(m_manager.LocalizeAppearanceString(stored).c_str());
}
