#include "SceneWidget.h"

CSceneWidget::CSceneWidget(QWidget* parent) : CUIViewerWidget(parent, 500, 200)
{
    SwitchScene(QStringLiteral("Cylinder"));
}
