#include "AppearancePreviewerQt.h"

#include "ItemRoles.h"

#include <QColor>
#include <QTableWidgetItem>

void CAppearancePreviewerQt::Preview(const kiv::CVec4<float>& color)
{
    const auto component = [](float value) { return int(value * 255); };
    m_item->setBackground(QColor(component(color.x), component(color.y), component(color.z), component(color.w)));
}

void CAppearancePreviewerQt::Preview(const kiv::String& imageFile)
{
    m_item->setData(TextureRole, QString::fromLocal8Bit(imageFile.c_str()));
}
