#pragma once

#include <MaterialUIExport.h>

#include <kiv/AppearanceLibraryManager.h>
#include <kiv/AppearanceLibraryProvider.h>

#include <QWidget>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QTableWidget;
class QTableWidgetItem;
class QTreeWidget;
class QTreeWidgetItem;

/// Shows one appearance library: a combo box to choose what is shown, a tree of the library and its categories, and a
/// table of the appearances of the current category with a picture each. It tells what the user selects or asks for by
/// signals and never changes a library itself.
///
/// Item roles, fixed numbers that hosts read: Qt::UserRole (256) holds the appearance id (table, both columns; tree
/// item of an appearance), the library's name (top-level tree item, combo box) or the category path (category item);
/// 257 is true on the tree item of an appearance; 254 the cloud flag, 255 the texture's file and 511 a picture drawn as
/// it is (all on table column 0).
///
/// A right click on a row or on the tree's item of an appearance, or the menu key there, opens a menu of what applies
/// to it, or to all selected rows where it is one of them: apply, copy (Ctrl+C) and export (Ctrl+E) in every library;
/// add to the favourites (Ctrl+D) where it is none; in the user's own libraries delete (Delete), change the type and
/// rename (F2) what can be edited; in the favourite library remove (Delete). What is in the cloud and not complete here
/// can only be downloaded, and removed from the favourites. The keys do the same, for the selected rows or else the
/// current one, while table or tree has the keyboard focus. A menu works on what it was opened for, as far as that is
/// still there.
///
/// The tree's own menu expands and collapses everything and chooses another library. Return announces the current
/// appearance once more; F3 finds the next match of the last search. Where several rows may be selected, the space bar
/// adds the current row to them or takes it out, and Ctrl+A selects all.
///
/// An appearance can be dragged out of table and tree, with the data that AppearanceMime.h tells.
class MATERIALUI_EXPORT CAppearanceLibraryBrowserCtrl : public QWidget {
    Q_OBJECT

public:
    using Appearances = std::vector<kiv::CAppearanceInstancePtr>;
    /// Asks the user; false leaves everything as it is.
    using Confirmation = std::function<bool(const Appearances& appearances)>;

    /// Manager and provider are borrowed and must outlive the control; the provider may be null.
    CAppearanceLibraryBrowserCtrl(kiv::CAppearanceLibraryManager& manager, QWidget* parent,
                                  AppearanceLibraryProvider* provider, bool cloudEnabled);
    ~CAppearanceLibraryBrowserCtrl() override;

    /// Shows a library. To show another one, clear the tree and call again.
    void AddLibrary(const std::shared_ptr<kiv::CAppearanceLibrary>& library);
    void AddIndex(const std::shared_ptr<kiv::CAppearanceLibrary>& library);

    /// Rebuilds tree and table for the library as it now stands, keeping category and selection where they still exist.
    void UpdateLibrary(const std::shared_ptr<kiv::CAppearanceLibrary>& library);
    /// Brings one appearance of the library shown in (true) or its row out (false). When the current row goes, the one
    /// that takes its place, or the one before, becomes current; that selects nothing.
    void UpdateLibrary(kiv::CAppearanceInstancePtr appearance, bool added);
    /// UpdateLibrary, but only while the library shown is the favourite library.
    void UpdateFavoriteLibrary(const std::shared_ptr<kiv::CAppearanceLibrary>& library);

    /// Selects the appearance in table row 1 (not 0) and the second top-level tree item. A single row selects nothing.
    void SelectDefault();
    /// Selects the appearance's row, changing to its category when the table does not show it. Null selects nothing.
    void SelectAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void SelectTableItem(QString id);
    /// Makes the tree item current whose Qt::UserRole text is the given one.
    void SelectTreeItem(QString name);

    /// The id of the selected appearance, empty when none was selected yet.
    QString GetCurSel() const;
    /// The selected appearance, null when it is no longer in the library shown.
    kiv::CAppearanceInstancePtr GetCurrentApperance() const;
    std::shared_ptr<kiv::CAppearanceLibrary> GetCurrentLibrary() const;
    QTreeWidgetItem* getCurrentTreeItem() const;
    QTreeWidget* GetTreeWidget() const;
    QTableWidget* GetTableWidget() const;
    AppearanceLibraryProvider* getAppearanceLibraryProvider() const;

    void ShowTreeWidget(bool show);
    /// Whether the appearance context menu may open and its keys work.
    void ShowAppearanceMenu(bool show);
    void ShowCollectAndSynchBtn(bool show);
    /// Whether a library of the user's own takes files, by the menu (Ctrl+I) or by dropping them here, and copies of
    /// appearances that are dropped here from another browser. Initially not.
    void ShowImport(bool show);
    /// Called once, before the signals, for all appearances that the user wants to delete, or to remove from the
    /// favourites. Without one nothing is asked.
    void SetDeleteConfirmation(const Confirmation& confirmation);
    void SetRemoveConfirmation(const Confirmation& confirmation);
    /// Several rows may be selected in the favourite library, one in any other.
    void SetTableWidgetSelectMode();
    /// Shows the entry of the library name in the combo box, without announcing it.
    void SetComboBoxCurrentItem(const std::string& name);
    void SetSearchKeyWord(QString keyword);
    /// Selects the first appearance, in tree order, whose shown name or tags contain the keyword, ignoring case.
    void onSearchKeyWord(QString keyword);

    /// Update the cloud mark or the picture of one appearance's row. False when there is no such row.
    bool ModifyTableWidgetItemCloud(kiv::CAppearanceInstancePtr appearance);
    bool SetTableWidgetIcon(kiv::CAppearanceInstancePtr appearance);
    /// Refreshes name and picture of an edited appearance, when it is shown here.
    void OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr& appearance, const std::string& key);

signals:
    void OnSelectAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void OnCopyandAddApperance(const kiv::CAppearanceInstancePtr& appearance);
    void OnAddFavoriteAppearance(const kiv::CAppearanceInstancePtr& appearance, const kiv::String& category);
    void OnDeleteApperance(kiv::CAppearanceInstancePtr& appearance);
    void OnRemoveApperance(kiv::CAppearanceInstancePtr& appearance);
    void OnDownloadTexture(const QString& id);
    void OnAppearanceTypeChanged(kiv::CAppearanceInstancePtr& appearance, const kiv::String& typeName);
    void OnDownloadAppearance(const QString& id);
    void OnMaterialLibraryChange(const kiv::String& libraryName);
    void OnAddFavoriteTextures();
    void OnSynchronizedCloud();
    /// The appearance was announced by OnSelectAppearance before.
    void OnApplyAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void OnRenameAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void OnExportAppearances(const CAppearanceLibraryBrowserCtrl::Appearances& appearances);
    /// ".ggm" archives and ".json" documents (paths of this machine) to bring into the library shown; none: ask which.
    void OnImportAppearances(const QStringList& files);

public slots:
    void currentItemChanged(QTreeWidgetItem* current, QTreeWidgetItem* previous);
    void currentItemChanged(QTableWidgetItem* current, QTableWidgetItem* previous);
    void currentItemChanged(QTreeWidgetItem* clicked, int column);
    void OnShowAppearanceMenu(const QPoint& position);
    void OnMenuCopyAppearance();
    void OnMenuDeleteAppearance();
    void OnMenuRemoveAppearance();
    void OnMenuAppearanceTypeChange();
    void OnMenuAppearanceTypeAccepted();
    void OnMenuAddFavoriteAppearance();
    void OnMenuDownloadAppearance();
    void OnSelectItem(QTableWidgetItem* item);
    void OnChooseLibrary();
    /// Shows an appearance that somebody added to the library, and selects it.
    void OnAddAppearance(const kiv::CAppearanceInstancePtr& appearance);
    void OnComboIndexChange(int index);
    void OnCollectBtnClick();
    void OnSynchronizedBtnClick();
    void OnShowTreeMenu(const QPoint& position);
    void onTableWidgetSort(int column);
    void OnMenuApplyAppearance();
    void OnMenuRenameAppearance();
    void OnMenuExportAppearances();
    void OnMenuImportAppearances();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void OnMenuChooseLibrary();

private:
    struct Private;
    std::unique_ptr<Private> m;
};
