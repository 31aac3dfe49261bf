#include "DialogState.h"

#include "AppearanceTreeItem.h"
#include "ItemRoles.h"
#include "MaterialLibraryForm.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <AppearancePreviewerCtrl.h>
#include <MaterialConstants.h>

#include <kiv/system/StoredPath.h>

#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>

#include <algorithm>

namespace {

constexpr long long MaxBytes = 64 * 1024;

const QString SizeKey = QStringLiteral("Dialog/size");
const QString SplitterKey = QStringLiteral("Dialog/splitter");
const QString LibraryKey = QStringLiteral("SystemLibrary/library");
const QString ShapeKey = QStringLiteral("Preview/shape");
const QString ShadingKey = QStringLiteral("Preview/shading");

QString keyOf(const CAppearanceLibraryBrowserCtrl& browser, const char* what)
{
    return browser.objectName() + QLatin1Char('/') + QLatin1String(what);
}

// ---- categories

QTreeWidgetItem* findCategory(QTreeWidgetItem& item, const QString& path)
{
    const QString own = item.type() == CategoryItem ? item.data(0, IdRole).toString() : QString();
    if (own == path)
        return &item;
    QTreeWidgetItem* found = nullptr;
    const bool mayHave = own.isEmpty() || path.startsWith(own + QLatin1Char('/'));
    for (int i = 0; mayHave && !found && i < item.childCount() && item.child(i)->type() == CategoryItem; ++i)
        found = findCategory(*item.child(i), path);
    return found;
}

QString shownCategory(const CAppearanceLibraryBrowserCtrl& browser)
{
    const QTreeWidgetItem* item = browser.getCurrentTreeItem();
    while (item && item->type() != CategoryItem)
        item = item->parent();
    return item ? item->data(0, IdRole).toString() : QString();
}

void restoreCategory(const CAppearanceLibraryBrowserCtrl& browser, const QSettings& settings)
{
    const QString path = settings.value(keyOf(browser, "category")).toString();
    QTreeWidget* tree = browser.GetTreeWidget();
    QTreeWidgetItem* found = nullptr;
    for (int i = 0; i < tree->topLevelItemCount() && !found && !path.isEmpty(); ++i)
        found = findCategory(*tree->topLevelItem(i), path);
    if (found)
        tree->setCurrentItem(found);
}

QString libraryName(const CAppearanceLibraryBrowserCtrl& browser)
{
    const auto shown = browser.GetCurrentLibrary();
    return shown ? QString::fromLocal8Bit(shown->GetName().c_str()) : QString();
}

bool showsFavorites(const CAppearanceLibraryBrowserCtrl& browser)
{
    return libraryName(browser) == QString::fromStdString(FAVORITE_LIBRARY_NAME);
}

// ---- sorting

void restoreSorting(CAppearanceLibraryBrowserCtrl& browser, const QSettings& settings)
{
    bool isNumber = false;
    const int column = settings.value(keyOf(browser, "sortColumn")).toInt(&isNumber);
    const QHeaderView* header = browser.GetTableWidget()->horizontalHeader();
    if (!isNumber || column < 0 || column >= header->count())
        return;
    const bool isDescending = settings.value(keyOf(browser, "sortDescending")).toBool();
    const auto order = isDescending ? Qt::DescendingOrder : Qt::AscendingOrder;
    // Each time the other way round.
    for (int i = 0; i < 2 && (i == 0 || header->sortIndicatorOrder() != order); ++i)
        browser.onTableWidgetSort(column);
}

void saveSorting(const CAppearanceLibraryBrowserCtrl& browser, QSettings& settings)
{
    const QHeaderView* header = browser.GetTableWidget()->horizontalHeader();
    if (!header->isSortIndicatorShown())
        return;
    settings.setValue(keyOf(browser, "sortColumn"), header->sortIndicatorSection());
    settings.setValue(keyOf(browser, "sortDescending"), header->sortIndicatorOrder() == Qt::DescendingOrder);
}

// ---- choices

// Announced as if a person had chosen it; a text that is no choice changes nothing.
void choose(QComboBox* box, const QString& text)
{
    const int index = box ? box->findText(text) : -1;
    if (index >= 0)
        box->setCurrentIndex(index);
}

QComboBox* choiceOf(const CMaterialLibraryForm& form, const char* name)
{
    return form.previewer->findChild<QComboBox*>(QLatin1String(name));
}

QString chosen(const QComboBox* box)
{
    return box ? box->currentText() : QString();
}

}  // namespace

CDialogState::CDialogState(const kiv::CAppearanceLibraryManager& manager, QDialog& dialog,
                           const CMaterialLibraryForm& form)
    : m_dialog(dialog), m_form(form)
{
    const std::wstring& favorites = manager.GetFavoriteLibraryPath();
    if (!favorites.empty())
        m_file = kiv::system::JoinPath(favorites, L"material-dialog.ini");
}

bool CDialogState::isReadable() const
{
    const long long size = kiv::system::FileSize(m_file);
    return size > 0 && size <= MaxBytes;
}

void CDialogState::Restore() const
{
    if (!isReadable())
        return;
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    restoreSize(settings);
    restoreSplitter(settings);
    restorePreview(settings);
    if (settings.value(LibraryKey).toString() == QString::fromStdString(FAVORITE_LIBRARY_NAME))
        emit m_form.systemBrowser->OnMaterialLibraryChange(FAVORITE_LIBRARY_NAME);
    for (CAppearanceLibraryBrowserCtrl* browser : {m_form.projectBrowser, m_form.systemBrowser}) {
        restoreSorting(*browser, settings);
        restoreCategory(*browser, settings);
    }
}

// Whoever chose a category meanwhile keeps it.
void CDialogState::RestoreFavorites() const
{
    if (!showsFavorites(*m_form.systemBrowser) || !shownCategory(*m_form.systemBrowser).isEmpty() || !isReadable())
        return;
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    if (settings.value(LibraryKey).toString() == QString::fromStdString(FAVORITE_LIBRARY_NAME))
        restoreCategory(*m_form.systemBrowser, settings);
}

void CDialogState::restoreSize(const QSettings& settings) const
{
    const QSize size = settings.value(SizeKey).toSize();
    const QScreen* screen = m_dialog.screen();
    if (size.isValid() && !size.isEmpty())
        m_dialog.resize(screen ? size.boundedTo(screen->availableSize()) : size);
}

void CDialogState::restoreSplitter(const QSettings& settings) const
{
    constexpr int most = 100000;
    const QVariantList stored = settings.value(SplitterKey).toList();
    QList<int> sizes;
    for (const QVariant& size : stored)
        sizes.append(size.toInt());
    const bool isSane = std::all_of(sizes.cbegin(), sizes.cend(), [](int size) { return size > 0 && size <= most; });
    if (isSane && sizes.size() == m_form.splitter->count())
        m_form.splitter->setSizes(sizes);
}

void CDialogState::restorePreview(const QSettings& settings) const
{
    choose(choiceOf(m_form, "shapeCombo"), settings.value(ShapeKey).toString());
    choose(choiceOf(m_form, "shadingCombo"), settings.value(ShadingKey).toString());
}

// What is no file of ours is left alone, and one that was not read is not read to be changed either.
void CDialogState::Save() const
{
    if (m_file.isEmpty() || (QFileInfo::exists(m_file) && !kiv::system::IsRegularFile(m_file)))
        return;
    if (!isReadable())
        QFile::remove(m_file);
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    const QString awaited = settings.value(keyOf(*m_form.systemBrowser, "category")).toString();
    settings.clear();
    settings.setValue(SizeKey, m_dialog.isMaximized() ? m_dialog.normalGeometry().size() : m_dialog.size());
    saveSplitter(settings);
    settings.setValue(LibraryKey, libraryName(*m_form.systemBrowser));
    for (const CAppearanceLibraryBrowserCtrl* browser : {m_form.projectBrowser, m_form.systemBrowser}) {
        // Closed before the favourites were there: they have had no category to choose.
        const bool isEarly = showsFavorites(*browser) && browser->GetCurrentLibrary()->count() == 0;
        settings.setValue(keyOf(*browser, "category"), isEarly ? awaited : shownCategory(*browser));
        saveSorting(*browser, settings);
    }
    settings.setValue(ShapeKey, chosen(choiceOf(m_form, "shapeCombo")));
    settings.setValue(ShadingKey, chosen(choiceOf(m_form, "shadingCombo")));
}

void CDialogState::saveSplitter(QSettings& settings) const
{
    QVariantList sizes;
    for (const int size : m_form.splitter->sizes())
        sizes.append(size);
    settings.setValue(SplitterKey, sizes);
}
