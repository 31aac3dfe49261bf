#pragma once

#include <glenox/RefPtr.h>
#include <kiv/Scene.h>

#include <QColor>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <string>

namespace kiv {
class CViewer;
}

class CBackgroundWorker;
class CSetStateSetWorker;
class CSwitchSceneWorker;
class QMouseEvent;

/// Shows one body in a viewer of the viewing library. The viewer is made late, on a first timer tick, and gets its body
/// on a second one; what is asked for before waits until then, and only the last of each kind counts. Mouse, wheel and
/// keys go to the viewer.
class CUIViewerWidget : public QWidget {
    Q_OBJECT

public:
    /// Intervals in milliseconds, of the ticks; the first one starts at once.
    CUIViewerWidget(QWidget* parent, int firstInterval, int secondInterval);
    ~CUIViewerWidget() override;

    /// A widget of somebody else that stands in until the viewer is there, and is hidden then; this one is hidden
    /// meanwhile. Without effect when the viewer is there.
    void SetPlaceholder(QWidget* placeholder);

    void SetBackgroundColor(const QColor& color);
    const QColor& GetBackgroundColor() const { return m_backgroundColor; }
    /// The name of a body (see PreviewBodies.h); the view is fitted to it. An unknown one changes nothing.
    void SwitchScene(const QString& shape);
    /// What the body is drawn with; held. The view stays. Null is ignored.
    void SetStateSet(kiv::CStateSet* stateSet);
    /// The folder (a stored path) of the six pictures of the sky box. Read on the first tick.
    void SetSkyBoxFolder(const std::wstring& folder) { m_skyBoxFolder = folder; }
    /// Whether the sky is seen, as it is at first; without it the background colour is, and the sky lights all the
    /// same.
    void ShowSky(bool shown);

    /// Null before the first tick.
    kiv::CViewer* GetViewer() const { return m_viewer.get(); }
    kiv::CVisualNode* GetPreviewNode() const { return m_node.get(); }

    /// Null: the viewer paints.
    QPaintEngine* paintEngine() const override { return nullptr; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

protected slots:
    void onTimer();
    void onTimer2();

private:
    void fillBackground();
    void createViewer();
    void runPendingBackground();
    void setUpSky();
    bool forwardKey(const QKeyEvent& event);
    void forwardMouse(QMouseEvent& event);

    QPointer<QWidget> m_placeholder;
    int m_firstInterval;
    int m_secondInterval;
    std::unique_ptr<kiv::CViewer> m_viewer;
    kiv::CVisualNodePtr m_node;
    std::wstring m_skyBoxFolder;
    bool m_isSkyShown = true;
    QColor m_backgroundColor;
    QTimer m_timer;
    std::unique_ptr<CBackgroundWorker> m_pendingBackground;
    std::unique_ptr<CSwitchSceneWorker> m_pendingScene;
    std::unique_ptr<CSetStateSetWorker> m_stateSetWorker;  ///< kept after use
};
