#pragma once

#include "Building.h"
#include "MaterialSwatch.h"

#include <QTreeWidget>

/// The elements that take materials, by group, each with a swatch of its material.
class ElementList : public QTreeWidget {
    Q_OBJECT

public:
    explicit ElementList(QWidget* parent = nullptr);

    void setBuilding(const Building& building);
    /// Makes the element current without announcing it; none for an empty id.
    void select(const QString& elementId);
    void setSwatch(const QString& elementId, const QPixmap& swatch, const QString& materialName);
    QTreeWidgetItem* itemOf(const QString& elementId) const { return m_items.value(elementId); }

    QSize sizeHint() const override { return {214, 400}; }

signals:
    void elementSelected(const QString& elementId);
    void elementActivated(const QString& elementId);

protected:
    /// Keys pass over the headings of groups.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    QTreeWidgetItem* addGroup(const BuildingGroup& group);
    void addElement(QTreeWidgetItem* group, const BuildingElement& element);

    QHash<QString, QTreeWidgetItem*> m_items;
};
