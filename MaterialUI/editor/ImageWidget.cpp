#include "ImageWidget.h"

#include "ImagePreviewerCtrl.h"

#include <PlainTip.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace {

constexpr int ButtonSide = 25;

// A separator that stands first belongs to the name.
QString fileName(const QString& path)
{
    int separator = path.lastIndexOf('/');
    if (separator < 0)
        separator = path.lastIndexOf('\\');
    return separator < 1 ? path : path.mid(separator + 1);
}

QToolButton* makeChooseButton(QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setText(QStringLiteral("..."));
    button->setToolTip(CImageWidget::tr("Select image"));
    button->setAccessibleName(button->toolTip());
    button->setMaximumSize(ButtonSide, ButtonSide);
    return button;
}

}  // namespace

CImageWidget::CImageWidget(QWidget* parent)
    : QWidget(parent), m_row(new QHBoxLayout), m_thumbnail(new CImagePreviewerCtrl(this)), m_name(new QLabel(this))
{
    QToolButton* choose = makeChooseButton(this);
    m_thumbnail->setObjectName(QStringLiteral("thumbnail"));
    m_row->setSpacing(3);
    m_row->addWidget(m_thumbnail, 1);
    m_row->addWidget(choose);
    m_name->setWordWrap(false);
    m_name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_name->setTextFormat(Qt::PlainText);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    layout->addLayout(m_row);
    layout->addWidget(m_name);
    layout->setStretch(0, 1);
    setFocusProxy(m_thumbnail);
    connect(m_thumbnail, SIGNAL(Clicked()), this, SLOT(OnOpenTextureEditor()));
    connect(m_thumbnail, SIGNAL(ChangeImageFile()), this, SLOT(OnChangeImageFile()));
    connect(choose, SIGNAL(clicked()), m_thumbnail, SLOT(OnChooseImage()));
}

void CImageWidget::SetImage(const QString& path)
{
    m_thumbnail->SetImage(path);
    OnChangeImageFile();
}

QString CImageWidget::GetImage() const
{
    return m_thumbnail->GetImage();
}

void CImageWidget::OnOpenTextureEditor()
{
    if (GetImage().isEmpty())
        m_thumbnail->OnChooseImage();
    else
        emit ShowTextureEditor(objectName());
}

void CImageWidget::OnChangeImageFile()
{
    m_name->setText(fileName(GetImage()));
    m_name->setToolTip(PlainTip(GetImage()));
}
