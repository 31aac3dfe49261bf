#pragma once

#include "UIViewerWidget.h"

/// The small preview of a texture, on a box.
class CTextureSceneWidget : public CUIViewerWidget {
    Q_OBJECT

public:
    explicit CTextureSceneWidget(QWidget* parent);
};
