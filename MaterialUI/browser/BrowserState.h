#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

class QTreeWidgetItem;

/// What a person had chosen in a browser, by names, so that it can be found again after tree and table were rebuilt.
struct CBrowserState {
    QString path;            ///< the category that the table showed
    QString treeCategory;    ///< the category current in the tree, or that of the current appearance
    QString treeAppearance;  ///< id of the appearance current in the tree, or empty
    QString selectedId;
    QStringList selectedRows;  ///< ids
    QStringList categories;    ///< all paths in the tree
    QSet<QString> expanded;    ///< paths; empty for the library itself
    int treeScroll = 0;
    int tableScroll = 0;

    /// Notes the categories below a library's item and which of them are open, the item itself included.
    void ReadCategories(const QTreeWidgetItem& item, const QString& path = {});
    /// Opens and closes them again.
    void WriteCategories(QTreeWidgetItem& item, const QString& path = {}) const;
};
