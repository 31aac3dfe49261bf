#pragma once

#include <kiv/MaterialLibrary.h>

#include <QObject>
#include <QPoint>

#include <functional>

class QDropEvent;
class QMimeData;
class QWidget;

/// Lets materials that are dragged from the material dialog be dropped onto the elements that a view shows. What is no
/// material, and every place where no element is, is refused while it is dragged.
class MaterialDrops : public QObject {
    Q_OBJECT

public:
    /// The element at a pixel of the view; empty when there is none.
    using ElementAt = std::function<QString(const QPoint& pixel)>;

    /// The library is borrowed; the view owns the object. Nothing is taken until setEnabled().
    MaterialDrops(QWidget& view, kiv::CMaterialLibrary& library, ElementAt elementAt);
    void setEnabled(bool enabled);

    /// The appearance of the dragged id, from the project's, the system's or the favourite library, which the document
    /// that is dragged along tells apart. One that none of them has comes from that document. Null when that is missing
    /// or refused.
    static kiv::CAppearanceInstancePtr materialOf(const QMimeData& data, kiv::CAppearanceLibraryManager& manager);

signals:
    /// A material is over the element; an empty id when it no longer is over any.
    void hovered(const QString& elementId, const QPoint& pixel);
    /// `source`: the widget of this program from which it was dragged, if any.
    void dropped(const QString& elementId, const kiv::CAppearanceInstancePtr& material, QObject* source);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void hover(QDropEvent& event);
    void leave();
    void drop(QDropEvent& event);

    QWidget& m_view;
    kiv::CAppearanceLibraryManager& m_manager;
    ElementAt m_elementAt;
    kiv::CAppearanceInstancePtr m_material;  // that is dragged over the view
};
