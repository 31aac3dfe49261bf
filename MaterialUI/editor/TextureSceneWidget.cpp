#include "TextureSceneWidget.h"

namespace {

const QColor Background(232, 234, 237);

}  // namespace

CTextureSceneWidget::CTextureSceneWidget(QWidget* parent) : CUIViewerWidget(parent, 100, 100)
{
    SwitchScene(QStringLiteral("Box"));
    SetBackgroundColor(Background);
}
