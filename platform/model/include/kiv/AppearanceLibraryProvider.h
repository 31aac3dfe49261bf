#pragma once

#include <QIcon>
#include <QList>
#include <QString>

/// A host's description of the trees that a browser offers instead of the two built-in libraries. Implemented and owned
/// by the host; must outlive the browsers that were given it. Read on the user-interface thread.
class AppearanceLibraryProvider {
public:
    /// One entry of the browser's combo box: what is shown, and the index of the tree that it opens.
    struct Level {
        QString text;
        int treeIndex = 0;
    };
    /// One node of a tree. The tree shows `name` as it stands, with the count in square brackets right after it unless
    /// it is negative. `categoryPath` is the category whose appearances the node shows; "/" separates levels.
    struct Category {
        QString name;
        QString categoryPath;
        int count = -1;
        QIcon icon;
        QList<Category> children;
    };

    virtual ~AppearanceLibraryProvider() = default;

    virtual QList<Level> GetLevels() const = 0;
    /// The top-level nodes of the tree of an index; empty for an index that is none of the levels'.
    virtual QList<Category> GetCategories(int treeIndex) const = 0;
};
