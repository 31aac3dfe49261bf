#include "AppearancePicture.h"

#include "PictureLoader.h"

#include <QPainter>

namespace {

constexpr int ChequerSide = 8;
const QColor FrameColor(0xc4, 0xcb, 0xd3);
const QColor EmptyColor(0xf4, 0xf6, 0xf8);
const QColor HintColor(0x40, 0x48, 0x50);

}  // namespace

CAppearancePicture::CAppearancePicture(QWidget* parent) : QWidget(parent), m_loader(new CPictureLoader(this))
{
    connect(m_loader, &CPictureLoader::Loaded, this, &CAppearancePicture::takePicture);
}

void CAppearancePicture::Clear(const QString& hint)
{
    show(EmptyColor, hint);
}

void CAppearancePicture::ShowColor(const QColor& color)
{
    show(color, {});
}

void CAppearancePicture::ShowFile(const QString& file, const QColor& color)
{
    show(color, {});
    m_file = file;
    m_loader->Load(file, size() * devicePixelRatioF());
}

void CAppearancePicture::show(const QColor& color, const QString& hint)
{
    m_file.clear();
    m_picture = {};
    m_color = color;
    m_hint = hint;
    update();
}

void CAppearancePicture::takePicture(const QString& file, const QImage& picture)
{
    if (file != m_file)
        return;
    m_picture = picture;
    m_hint = picture.isNull() ? tr("纹理图片无法读取") : QString();
    update();
}

void CAppearancePicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_picture.isNull() || m_picture.hasAlphaChannel())
        paintGround(painter);
    if (m_picture.isNull())
        painter.fillRect(rect(), m_color);
    else
        paintPicture(painter);
    paintHint(painter);
    painter.setPen(FrameColor);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void CAppearancePicture::paintGround(QPainter& painter) const
{
    painter.fillRect(rect(), Qt::white);
    for (int y = 0; y < height(); y += ChequerSide) {
        for (int x = y / ChequerSide % 2 * ChequerSide; x < width(); x += 2 * ChequerSide)
            painter.fillRect(x, y, ChequerSide, ChequerSide, QColor(0xdd, 0xdd, 0xdd));
    }
}

void CAppearancePicture::paintPicture(QPainter& painter) const
{
    const QSizeF cut = QSizeF(size()).scaled(m_picture.size(), Qt::KeepAspectRatio);
    QRectF source({}, cut);
    source.moveCenter(QRectF(m_picture.rect()).center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(rect()), m_picture, source);
}

void CAppearancePicture::paintHint(QPainter& painter) const
{
    if (m_hint.isEmpty())
        return;
    QRect plate = painter.fontMetrics().boundingRect(rect(), Qt::AlignCenter, m_hint);
    plate.adjust(-8, -4, 8, 4);
    painter.fillRect(plate, EmptyColor);
    painter.setPen(HintColor);
    painter.drawText(rect(), Qt::AlignCenter, m_hint);
}
