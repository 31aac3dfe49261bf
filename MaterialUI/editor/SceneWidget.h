#pragma once

#include "UIViewerWidget.h"

/// The large preview. Starts with a cylinder.
class CSceneWidget : public CUIViewerWidget {
    Q_OBJECT

public:
    explicit CSceneWidget(QWidget* parent);

    QSize sizeHint() const override { return {300, 100}; }
};
