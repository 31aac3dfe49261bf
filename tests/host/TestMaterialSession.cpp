#include "HostFixture.h"

#include <MainWindow.h>
#include <MaterialTest.h>

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialLibraryWidget.h>

#include <QPushButton>

using kiv::CAppearanceInstancePtr;

/// What the user saw is what is kept, through the real dialog.
class TestMaterialSession : public MaterialTest {
    Q_OBJECT

private slots:
    void keepsWhatWasShown_data();
    void keepsWhatWasShown();
    void opensOnTheElementsMaterial();

private:
    HostFixture m_fixture;
};

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

void TestMaterialSession::keepsWhatWasShown_data()
{
    QTest::addColumn<QStringList>("selections");  // "system" and "project", in order
    QTest::addColumn<bool>("accept");
    QTest::addColumn<QString>("kept");
    QTest::newRow("nothing, accepted") << QStringList() << true << "own";
    QTest::newRow("system, accepted") << QStringList{"system"} << true << "system";
    QTest::newRow("system, cancelled") << QStringList{"system"} << false << "own";
    QTest::newRow("project, accepted") << QStringList{"project"} << true << "project";
    QTest::newRow("project, then system") << QStringList{"project", "system"} << true << "system";
    QTest::newRow("system, then project") << QStringList{"system", "project"} << true << "project";
    QTest::newRow("both, cancelled") << QStringList{"system", "project"} << false << "own";
}

void TestMaterialSession::keepsWhatWasShown()
{
    QFETCH(QStringList, selections);
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

void TestMaterialSession::opensOnTheElementsMaterial()
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

MATERIAL_TEST_MAIN(TestMaterialSession)
#include "TestMaterialSession.moc"
