#include "HostFixture.h"

#include <MainWindow.h>
#include <MaterialTest.h>

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialLibraryWidget.h>

#include <QPushButton>

using kiv::CAppearanceInstancePtr;

namespace {

const QString Wall = "ground-wall";

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

private:
    HostFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestMaterialSession)
#include "TestMaterialSession.moc"
