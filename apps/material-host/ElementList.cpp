#include "ElementList.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace {

QString idOf(const QTreeWidgetItem* item)
{
    return item ? item->data(0, Qt::UserRole).toString() : QString();
}

}  // namespace

ElementList::ElementList(QWidget* parent) : QTreeWidget(parent)
{
    header()->hide();
    setIconSize({22, 22});
    setIndentation(12);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setFrameShape(QFrame::NoFrame);
    connect(this, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* current) { emit elementSelected(idOf(current)); });
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        if (!idOf(item).isEmpty())
            emit elementActivated(idOf(item));
    });
}

void ElementList::setBuilding(const Building& building)
{
    const QSignalBlocker quiet(this);
    clear();
    m_items.clear();
    QHash<QString, QTreeWidgetItem*> groups;
    for (const BuildingGroup& group : building.groups)
        groups.insert(group.id, addGroup(group));
    // Elements come from back to front; people read from the front.
    for (auto it = building.elements.rbegin(); it != building.elements.rend(); ++it)
        if (it->takesMaterial())
            addElement(groups.value(it->group, invisibleRootItem()), *it);
    expandAll();
}

QTreeWidgetItem* ElementList::addGroup(const BuildingGroup& group)
{
    auto* item = new QTreeWidgetItem(this, {group.name});
    item->setFlags(Qt::ItemIsEnabled);
    QFont bold = font();
    bold.setBold(true);
    item->setFont(0, bold);
    item->setForeground(0, QColor(84, 94, 108));
    item->setBackground(0, QColor(240, 243, 246));
    return item;
}

void ElementList::addElement(QTreeWidgetItem* group, const BuildingElement& element)
{
    auto* item = new QTreeWidgetItem(group, {element.name});
    item->setData(0, Qt::UserRole, element.id);
    m_items.insert(element.id, item);
}

QModelIndex ElementList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // A view that gets the keyboard moves to its first entry, which nobody has chosen.
    if (action == MoveNext && !currentIndex().isValid())
        return {};
    const QModelIndex next = QTreeWidget::moveCursor(action, modifiers);
    if (!next.isValid() || !idOf(itemFromIndex(next)).isEmpty())
        return next;
    const bool isUpwards = action == MoveUp || action == MovePageUp || action == MovePrevious || action == MoveLeft;
    const QModelIndex beyond = isUpwards ? indexAbove(next) : indexBelow(next);
    return beyond.isValid() ? beyond : currentIndex();
}

void ElementList::select(const QString& elementId)
{
    const QSignalBlocker quiet(this);
    QTreeWidgetItem* item = itemOf(elementId);
    setCurrentItem(item);
    if (item)
        scrollToItem(item);
    else
        clearSelection();
}

void ElementList::setSwatch(const QString& elementId, const QPixmap& swatch, const QString& materialName)
{
    QTreeWidgetItem* item = itemOf(elementId);
    if (!item)
        return;
    QIcon icon(swatch);
    // The style would tint it, and a tinted swatch shows another colour.
    icon.addPixmap(swatch, QIcon::Selected);
    icon.addPixmap(swatch, QIcon::Disabled);
    item->setIcon(0, icon);
    item->setToolTip(0, item->text(0) + " · " + materialName);
}
