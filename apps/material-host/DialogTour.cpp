#include "DialogTour.h"

#include "MainWindow.h"
#include "TourChecks.h"
#include "TourInput.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialConstants.h>

#include <kiv/AppearanceParser.h>

#include <QApplication>
#include <QDialog>
#include <QTableWidget>
#include <QTreeWidget>

using kiv::CAppearanceInstancePtr;
using TourChecks::await;
using TourChecks::awaitActive;
using TourChecks::awaitSettled;
using TourChecks::expect;

namespace {

QModelIndex rowOf(const QTableWidget& table, const QString& id)
{
    for (int row = 0; row < table.rowCount(); ++row)
        if (table.item(row, 1) && table.item(row, 1)->data(Qt::UserRole).toString() == id)
            return table.model()->index(row, 1);
    return {};
}

QTreeWidgetItem* itemOf(const QTreeWidget& tree, const QString& path)
{
    for (QTreeWidgetItemIterator it(const_cast<QTreeWidget*>(&tree)); *it; ++it)
        if ((*it)->data(0, Qt::UserRole).toString() == path)
            return *it;
    return nullptr;
}

QDialog* openDialog()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == "MaterialLibrary" && window->isVisible())
            return qobject_cast<QDialog*>(window);
    return nullptr;
}

}  // namespace

QString DialogTour::idOf(const CAppearanceInstancePtr& material)
{
    return QString::fromLocal8Bit(material->GetId().c_str());
}

QDialog& DialogTour::dialog() const
{
    if (QDialog* open = openDialog())
        return *open;
    throw TourFailure("the material library is not open");
}

CAppearanceLibraryBrowserCtrl& DialogTour::browser(const char* name) const
{
    return TourChecks::part<CAppearanceLibraryBrowserCtrl>(dialog(), name);
}

CAppearanceInstancePtr DialogTour::systemMaterial(const kiv::String& name) const
{
    for (const auto& entry : *m_library.GetMaterialManager()->GetSystemLibrary())
        if (entry.second->GetName() == name)
            return entry.second;
    throw TourFailure("the system library has no \"" + QString::fromStdString(name) + "\"");
}

void DialogTour::showCategory(const QString& path) const
{
    QTreeWidget& tree = *browser("SystemLibrary").GetTreeWidget();
    QTreeWidgetItem* item = itemOf(tree, path);
    expect(item, "the tree has the category " + path);
    tree.scrollToItem(item);
    TourInput::click(*tree.viewport(), tree.visualItemRect(item).center());
    expect(tree.currentItem() == item, "the category " + path + " is selected");
    awaitSettled(dialog());
}

void DialogTour::clickMaterial(const CAppearanceInstancePtr& material) const
{
    QTableWidget& table = *browser("SystemLibrary").GetTableWidget();
    const QModelIndex index = rowOf(table, idOf(material));
    expect(index.isValid(), "the table lists " + QString::fromStdString(material->GetName()));
    TourInput::clickItem(table, index);
    expect(browser("SystemLibrary").GetCurSel() == idOf(material), "the click selects it");
}

QModelIndex DialogTour::row(const char* browserName, const QString& id) const
{
    return rowOf(*browser(browserName).GetTableWidget(), id);
}

QString DialogTour::nameInRow(const char* browserName, const QString& id) const
{
    return row(browserName, id).data().toString();
}

DialogTour::Documents DialogTour::projectLibrary() const
{
    const kiv::CAppearanceParser parser(*m_library.GetMaterialManager());
    Documents documents;
    for (const auto& entry : *m_library.GetMaterialManager()->FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME))
        documents[QString::fromStdString(entry.first)] = parser.AppearanceToString(entry.second);
    return documents;
}

QImage DialogTour::drawing(MainWindow& window) const
{
    window.elevation().drawing();  // asks for the textures that it needs
    await([&] { return window.textures().isIdle(); }, "the textures are there");
    return window.elevation().drawing();
}

QPoint DialogTour::pointOn(const QWidget& view, const QString& elementId,
                           const std::function<QString(const QPoint&)>& elementAt)
{
    constexpr int step = 12;
    const auto shows = [&](const QPoint& point) {
        return QApplication::widgetAt(view.mapToGlobal(point)) == &view && elementAt(point) == elementId;
    };
    for (int y = step; y < view.height(); y += step)
        for (int x = step; x < view.width(); x += step)
            if (shows({x, y}) && shows({x - step, y - step}) && shows({x + step, y + step}))
                return {x, y};
    throw TourFailure("the element " + elementId + " is not to be seen");
}

void DialogTour::awaitOpen() const
{
    await([] { return openDialog(); }, "the material library opens");
    awaitActive(dialog());
}

void DialogTour::awaitFavorites() const
{
    const auto loaded = [this] {
        const auto favorites = m_library.GetMaterialManager()->FindUserAppearanceLibrary(FAVORITE_LIBRARY_NAME);
        return favorites && favorites->count() > 0 && !QApplication::activeModalWidget();
    };
    await(loaded, "the favourites are loaded");
    awaitActive(dialog());
}

QWidget& DialogTour::preview() const
{
    auto& scene = TourChecks::part<QWidget>(dialog(), "sceneWidget");
    await([&] { return scene.isVisible(); }, "the preview is there");
    return scene;
}

void DialogTour::closeDialog(QWidget& window, const std::function<void()>& how) const
{
    how();
    await([] { return !openDialog() && !QApplication::activeModalWidget(); }, "the dialog closes");
    awaitActive(window);
}
