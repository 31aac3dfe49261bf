#pragma once

#include "AppearanceEntry.h"

#include <QAbstractItemView>

#include <functional>

/// Lets appearances be dragged out of views: pressing the left button on one and moving on starts a drag with what
/// AppearanceMime tells. The press selects as ever; what it and the moving would add to a selection of several rows is
/// taken back.
class CAppearanceDrag : public QObject {
    Q_OBJECT

public:
    /// The entry at a position of the view's viewport, null where there is none to be dragged.
    using EntryAt = std::function<CAppearanceEntryPtr(const QAbstractItemView& view, const QPoint& position)>;

    /// The manager is borrowed.
    CAppearanceDrag(const kiv::CAppearanceLibraryManager& manager, EntryAt entryAt, QObject* parent);

    void Watch(QAbstractItemView& view);

signals:
    /// The drag is over, wherever it went; its view will see no release of the button.
    void Finished();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void press(const QAbstractItemView& view, const QMouseEvent& event);
    bool move(QAbstractItemView& view, const QMouseEvent& event);
    void start(QAbstractItemView& view);

    const kiv::CAppearanceLibraryManager& m_manager;
    EntryAt m_entryAt;
    CAppearanceEntryPtr m_pressed;
    QItemSelection m_selectionBefore;
    QPoint m_position;
};
