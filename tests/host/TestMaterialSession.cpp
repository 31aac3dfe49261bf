#include "HostFixture.h"

#include <MainWindow.h>
#include <MaterialTest.h>

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialLibraryWidget.h>

#include <ModalMeeting.h>

#include <MaterialConstants.h>

#include <QDropEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>

using kiv::CAppearanceInstancePtr;

namespace {

const QString Wall = "ground-wall";
const QString Roof = "roof";

CMaterialLibraryWidget& dialogOf(MainWindow& window)
{
    auto* dialog = window.findChild<CMaterialLibraryWidget*>();
    if (!dialog)
        qFatal("the dialog is not open");
    return *dialog;
}

CAppearanceLibraryBrowserCtrl& browser(MainWindow& window, const char* name)
{
    return *dialogOf(window).findChild<CAppearanceLibraryBrowserCtrl*>(name);
}

void close(MainWindow& window, bool accept)
{
    CMaterialLibraryWidget& dialog = dialogOf(window);
    if (accept)
        dialog.findChild<QPushButton*>("pushButtonOk")->click();
    else
        dialog.reject();
    QVERIFY(QTest::qWaitFor([&] { return !window.findChild<CMaterialLibraryWidget*>(); }));
}

QImage drawing(MainWindow& window)
{
    window.elevation().drawing();
    if (!QTest::qWaitFor([&] { return window.textures().isIdle(); }, 30000))
        qFatal("the textures do not arrive");
    return window.elevation().drawing();
}

void open(MainWindow& window)
{
    MaterialTest::expectWarning("Could not parse stylesheet");  // the dialog's, which ends with a brace too many
    window.show();
    QVERIFY(window.start({}));
    window.selectElement(Wall);
    window.openLibrary();
}

int usesOf(MainWindow& window, const CAppearanceInstancePtr& material)
{
    const ProjectDocument::Assignments assignments = window.document().assignments();
    return int(std::count(assignments.begin(), assignments.end(), material));
}

/// Whether a menu that can be opened has an entry of the shortcut.
bool shortcutIsOpen(const MainWindow& window, const QKeySequence& keys)
{
    for (const QAction* menu : window.menuBar()->actions())
        for (const QAction* action : menu->menu()->actions())
            if (menu->isEnabled() && action->isEnabled() && action->shortcuts().contains(keys))
                return true;
    return false;
}

QPoint pointIn(MainWindow& window, const QString& elementId)
{
    for (int y = 4; y < window.elevation().height(); y += 4)
        for (int x = 4; x < window.elevation().width(); x += 4)
            if ((window.shows3D() ? window.view3D().elementAt({x, y}) : window.elevation().elementAt({x, y})) ==
                elementId)
                return {x, y};
    qFatal("the element is not to be seen");
}

/// As the platform does with what is dragged over the view and let go. Whether it was taken.
bool dropOn(MainWindow& window, const QPoint& point, const QMimeData& data)
{
    QWidget& view = window.shows3D() ? static_cast<QWidget&>(window.view3D()) : window.elevation();
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &enter);
    QDragMoveEvent move(point, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &move);
    QDropEvent drop(point, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(&view, &drop);
    if (move.isAccepted() != drop.isAccepted())
        qFatal("what the pointer promises is not what happens");
    return enter.isAccepted() && drop.isAccepted();
}

}  // namespace

/// What the user saw is what is kept, through the real dialog.
class TestMaterialSession : public MaterialTest {
    Q_OBJECT

private slots:
    void keepsWhatWasShown_data()
    {
        const auto row = testColumns<QStringList, bool, QString>("selections", "accept", "kept");
        row("nothing, accepted", {}, true, "own");
        row("system, accepted", {"system"}, true, "system");
        row("system, cancelled", {"system"}, false, "own");
        row("project, accepted", {"project"}, true, "project");
        row("project, then system", {"project", "system"}, true, "system");
        row("system, then project", {"system", "project"}, true, "project");
        row("both, cancelled", {"system", "project"}, false, "own");
    }

    void keepsWhatWasShown()
    {
        QFETCH(QStringList, selections);  // "system" and "project", in order
        QFETCH(bool, accept);
        QFETCH(QString, kept);
        expectWarning("Could not parse stylesheet");  // the dialog's, which ends with a brace too many
        MainWindow window(m_fixture.library(), m_fixture.options());
        window.show();
        QVERIFY(window.start({}));
        const QMap<QString, CAppearanceInstancePtr> materials{{"own", window.drawnMaterial(Wall)},
                                                              {"system", m_fixture.systemMaterial("Ashlar masonry")},
                                                              {"project", window.drawnMaterial("upper-wall")}};
        QMap<CAppearanceInstancePtr, QImage> drawings{{materials["own"], drawing(window)}};
        window.selectElement(Wall);
        window.openLibrary();
        for (const QString& selection : selections) {
            const char* name = selection == "system" ? "SystemLibrary" : "ProjectLibrary";
            browser(window, name).SelectAppearance(materials[selection]);
            QCOMPARE(window.drawnMaterial(Wall), materials[selection]);
            drawings[materials[selection]] = drawing(window);
            QVERIFY(drawings[materials[selection]] != drawings[materials["own"]]);
        }
        QCOMPARE(window.document().materialOf(Wall), materials["own"]);
        close(window, accept);
        QCOMPARE(window.document().materialOf(Wall), materials[kept]);
        QCOMPARE(window.drawnMaterial(Wall), materials[kept]);
        QVERIFY(drawing(window) == drawings[materials[kept]]);
        QCOMPARE(window.document().undoStack().count(), kept == "own" ? 0 : 1);
        window.document().undoStack().undo();
        QVERIFY(drawing(window) == drawings[materials["own"]]);
    }

    void opensOnTheElementsMaterial()
    {
        expectWarning("Could not parse stylesheet");  // the dialog's, which ends with a brace too many
        MainWindow window(m_fixture.library(), m_fixture.options());
        window.show();
        QVERIFY(window.start({}));
        window.selectElement(Wall);
        window.openLibrary();
        const QString own = QString::fromStdString(window.drawnMaterial(Wall)->GetId());
        QCOMPARE(browser(window, "ProjectLibrary").GetCurSel(), own);
        close(window, false);

        const CAppearanceInstancePtr system = m_fixture.systemMaterial("Ashlar masonry");
        window.document().assign(Wall, system);
        window.openLibrary();
        QCOMPARE(browser(window, "SystemLibrary").GetCurrentApperance(), system);
        QCOMPARE(window.drawnMaterial(Wall), system);
        close(window, true);
        QCOMPARE(window.document().undoStack().count(), 1);
    }

    void materialsAreDropped_data()
    {
        const auto row = testColumns<bool, QString, bool, bool>("space", "dragged", "taken", "accept");
        row("elevation, kept", false, "system", true, true);
        row("elevation, cancelled", false, "system", true, false);
        row("space, kept", true, "system", true, true);
        row("of the project", false, "project", true, true);
        row("with the id of one of the project", false, "twin", true, true);
        row("of another program", false, "unknown", true, true);
        row("nothing but an unknown id", false, "id", false, true);
        row("damaged", false, "damaged", false, true);
    }

    void materialsAreDropped()
    {
        QFETCH(bool, space);
        QFETCH(QString, dragged);
        QFETCH(bool, taken);
        QFETCH(bool, accept);
        MainWindow window(m_fixture.library(), m_fixture.options());
        window.show3D(space);
        open(window);
        const CAppearanceInstancePtr onWall = m_fixture.systemMaterial("Ashlar masonry");
        const CAppearanceInstancePtr ownOfWall = window.drawnMaterial(Wall);
        const CAppearanceInstancePtr ownOfRoof = window.drawnMaterial(Roof);
        const CAppearanceInstancePtr known = dragged == "system" || dragged == "twin"
                                                 ? m_fixture.systemMaterial("Slate roofing")
                                                 : window.drawnMaterial("upper-wall");
        const bool isKnown = dragged == "system" || dragged == "project" || dragged == "twin";
        if (dragged == "twin")
            m_fixture.manager()
                .FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME)
                ->AddInstance(ownOfWall->Clone(known->GetId()));
        QMimeData data;
        data.setData("application/x-kiv-appearance-id", isKnown ? known->GetId().c_str() : "nobody's");
        if (dragged != "id")
            data.setData("application/x-kiv-appearance+json",
                         dragged == "damaged" ? "{" : m_fixture.document(isKnown ? known : known->Clone("nobody's")));

        browser(window, "SystemLibrary").SelectAppearance(onWall);
        QVERIFY(!dropOn(window, {2, 2}, data) || space);  // the sky of the elevation
        QCOMPARE(dropOn(window, pointIn(window, Roof), data), taken);
        const CAppearanceInstancePtr onRoof = window.drawnMaterial(Roof);
        if (!taken)
            QCOMPARE(onRoof, ownOfRoof);
        else if (isKnown)
            QCOMPARE(onRoof, known);
        else
            QCOMPARE(onRoof->GetId(), kiv::String("nobody's"));
        QCOMPARE(window.drawnMaterial(Wall), onWall);

        close(window, accept);
        QCOMPARE(window.drawnMaterial(Wall), accept ? onWall : ownOfWall);
        QCOMPARE(window.drawnMaterial(Roof), accept ? onRoof : ownOfRoof);
        QCOMPARE(window.document().undoStack().count(), accept ? 1 : 0);
        window.document().undoStack().undo();
        QCOMPARE(window.drawnMaterial(Wall), ownOfWall);
        QCOMPARE(window.drawnMaterial(Roof), ownOfRoof);
        QVERIFY(!dropOn(window, pointIn(window, Roof), data) || window.drawnMaterial(Roof) == ownOfRoof);
    }

    void deletedMaterialsKeepTheirElements_data()
    {
        const auto row = testColumns<bool>("accept");
        row("kept", true);
        row("cancelled", false);
    }

    void deletedMaterialsKeepTheirElements()
    {
        QFETCH(bool, accept);
        MainWindow window(m_fixture.library(), m_fixture.options());
        open(window);
        close(window, false);
        const CAppearanceInstancePtr material = window.drawnMaterial("upper-wall");
        const CAppearanceInstancePtr ownOfWall = window.drawnMaterial(Wall);
        window.document().assign(Wall, material);
        const QImage before = drawing(window);
        QString question;
        window.openLibrary();
        browser(window, "ProjectLibrary").SelectAppearance(material);
        ModalMeeting<QMessageBox> meeting([&](QMessageBox& box) {
            question = box.text() + box.informativeText();
            box.button(QMessageBox::Yes)->click();
        });
        browser(window, "ProjectLibrary").OnMenuDeleteAppearance();
        QVERIFY2(question.contains(QString::number(usesOf(window, material))), qPrintable(question));
        QVERIFY(!window.document().isInProjectLibrary(material));
        QVERIFY(drawing(window) == before);
        close(window, accept);
        QVERIFY(drawing(window) == before);
        window.document().undoStack().undo();
        QCOMPARE(window.drawnMaterial(Wall), ownOfWall);
        window.document().undoStack().redo();
        QCOMPARE(window.drawnMaterial(Wall), window.drawnMaterial("upper-wall"));
        QCOMPARE(m_fixture.document(window.drawnMaterial(Wall)), m_fixture.document(material));
        // Brought back it is another object, which the undo stack has to find, too.
        QCOMPARE(window.document().sourceOf(window.drawnMaterial(Wall)),
                 accept ? MaterialSource::Gone : MaterialSource::Project);
        QVERIFY(window.document().save(m_fixture.path("deleted.json")));
        HostFixture other;
        ProjectDocument reopened(other.library(), "en");
        QVERIFY2(reopened.open(m_fixture.path("deleted.json")), qPrintable(reopened.reason()));
        QCOMPARE(other.document(reopened.materialOf(Wall)), m_fixture.document(material));
        QCOMPARE(reopened.sourceOf(reopened.materialOf(Wall)), accept ? MaterialSource::Gone : MaterialSource::Project);
    }

    void copiesOfACancelledSessionDoNotStay()
    {
        MainWindow window(m_fixture.library(), m_fixture.options());
        open(window);
        const CAppearanceInstancePtr ownOfRoof = window.drawnMaterial(Roof);
        const auto library = m_fixture.manager().FindUserAppearanceLibrary(CUSTOMER_LIBRARY_NAME);
        const std::size_t count = library->count();
        const QImage before = drawing(window);
        browser(window, "SystemLibrary").SelectAppearance(m_fixture.systemMaterial("Slate roofing"));
        browser(window, "SystemLibrary").OnMenuCopyAppearance();
        QCOMPARE(library->count(), count + 1);
        const CAppearanceInstancePtr copy = browser(window, "ProjectLibrary").GetCurrentApperance();
        QMimeData data;
        data.setData("application/x-kiv-appearance-id", copy->GetId().c_str());
        QVERIFY(dropOn(window, pointIn(window, Roof), data));
        QCOMPARE(window.drawnMaterial(Roof), copy);
        QTest::keyClick(&dialogOf(window), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(window.drawnMaterial(Roof), ownOfRoof);

        browser(window, "SystemLibrary").OnMenuCopyAppearance();
        close(window, false);
        QCOMPARE(library->count(), count);
        QVERIFY(drawing(window) == before);
        QVERIFY(!window.document().isModified());
    }

    void theWindowWaitsForTheDialog()
    {
        MainWindow window(m_fixture.library(), m_fixture.options());
        open(window);
        const CAppearanceInstancePtr own = window.drawnMaterial(Wall);
        QTest::mouseClick(&window.elevation(), Qt::LeftButton, {}, pointIn(window, Roof));
        QCOMPARE(window.selectedElement(), Wall);
        for (const QKeySequence keys : {QKeySequence::Save, QKeySequence::Undo, QKeySequence::New})
            QVERIFY(!shortcutIsOpen(window, keys));
        browser(window, "SystemLibrary").SelectAppearance(m_fixture.systemMaterial("Ashlar masonry"));
        const CMaterialLibraryWidget* dialog = &dialogOf(window);
        window.openLibrary();
        QCOMPARE(&dialogOf(window), dialog);

        QVERIFY(window.close());
        QTRY_VERIFY(!window.findChild<CMaterialLibraryWidget*>());
        QCOMPARE(window.document().materialOf(Wall), own);
        window.show();
        window.selectElement(Roof);
        QCOMPARE(window.selectedElement(), Roof);
        window.document().assign(Wall, m_fixture.systemMaterial("Ashlar masonry"));
        window.openLibrary();
        ModalMeeting<QMessageBox> meeting([](QMessageBox& box) { box.button(QMessageBox::Cancel)->click(); });
        QVERIFY(!window.close());
        QVERIFY(meeting.met && window.isVisible());
        QTRY_VERIFY(!window.findChild<CMaterialLibraryWidget*>());
    }

private:
    HostFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestMaterialSession)
#include "TestMaterialSession.moc"
