#pragma once

#include <kiv/AppearanceLibraryManager.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

class QTableWidgetItem;

/// What the browser shows of one appearance, shared by its row and its tree item so that a large library is read once.
/// The picture is asked for when it is first painted: finding a texture's file asks the file system.
class CAppearanceEntry {
public:
    /// The manager is borrowed and must outlive the entry.
    CAppearanceEntry(kiv::CAppearanceLibraryManager& manager, const kiv::String& id,
                     kiv::CAppearanceInstancePtr appearance);

    const kiv::CAppearanceInstancePtr& Appearance() const { return m_appearance; }
    const QString& Id() const { return m_id; }
    const QString& Name() const { return m_name; }  ///< as shown
    bool IsInCloud() const { return m_inCloud; }
    void SetInCloud(bool inCloud) { m_inCloud = inCloud; }

    /// The category path without empty segments.
    const QString& Category() const { return m_category; }
    void SetCategory(const QString& path) { m_category = path; }
    /// Whether the category is the path or below it; everything is below the empty path.
    bool IsBelow(const QString& path) const;

    /// Name, type and tags as rich text.
    QString ToolTip() const;
    /// The colour (a brush) or the file of the texture (a text); the other one is invalid.
    const QVariant& Background() const;
    const QVariant& Texture() const;

    /// Whether the name or the tags contain the text, ignoring case.
    bool Contains(const QString& text) const;

    /// The position in the index of the library's search, -1 when it is not in there or has changed since.
    int IndexPosition() const { return m_indexPosition; }
    void SetIndexPosition(int position) { m_indexPosition = position; }

    /// The cell of the name in the table that shows the entry, null when none does.
    QTableWidgetItem* Cell() const { return m_cell; }
    void SetCell(QTableWidgetItem* cell) { m_cell = cell; }

    /// Reads name, cloud flag and, when next asked, the picture again.
    void Refresh();

private:
    void preview() const;

    kiv::CAppearanceLibraryManager* m_manager;
    kiv::CAppearanceInstancePtr m_appearance;
    QString m_id;
    QString m_name;
    QString m_category;
    mutable QVariant m_background;
    mutable QVariant m_texture;
    QTableWidgetItem* m_cell = nullptr;
    int m_indexPosition = -1;
    bool m_inCloud = false;
    mutable bool m_previewed = false;
};

using CAppearanceEntryPtr = std::shared_ptr<CAppearanceEntry>;
using CAppearanceEntries = std::vector<CAppearanceEntryPtr>;

/// "a//b/" as "a/b".
QString CleanCategoryPath(const QString& path);
