#include "DialogFixture.h"

#include <AppearanceLibraryBrowserCtrl.h>
#include <MaterialTest.h>
#include <SceneWidget.h>

#include <kiv/ShaderProgramManager.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>

/// Building the dialog, selecting, searching, switching and applying.
class TestDialog : public MaterialTest {
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<DialogFixture>(); }
    void theCloudShowsWhereThereIsOne()
    {
        const auto buttonsAreThere = [](const CAppearanceLibraryBrowserCtrl* browser) {
            const auto buttons = browser->findChildren<QToolButton*>();
            return std::any_of(buttons.begin(), buttons.end(), [](const auto* button) { return button->isVisible(); });
        };
        for (const bool cloud : {true, false}) {
            TestedDialog dialog(*m_fixture, cloud);
            dialog.show();
            QCOMPARE(buttonsAreThere(dialog.system()), cloud);
            QVERIFY(!buttonsAreThere(dialog.project()));
            QCOMPARE(dialog.findChild<QLabel*>("LabelAccount")->isVisible(), cloud);
        }
    }

    void firstSelection_data()
    {
        const auto row = testColumns<int, bool, QString>("appearances", "cloud", "shown");
        row("row 0", 3, false, "s0");
        row("row 1 with the cloud", 3, true, "s1");
        row("a single row selects nothing", 1, false, "");
        row("nor does an empty library", 0, true, "");
    }

    void firstSelection()
    {
        QFETCH(int, appearances);
        QFETCH(bool, cloud);
        m_fixture->addSystemAppearances(appearances - 3);
        TestedDialog dialog(*m_fixture, cloud);
        QTEST(dialog.shownName(), "shown");
        QCOMPARE(dialog.findChild<QPushButton*>("pushButtonApply")->isHidden(), dialog.shownName().isEmpty());
    }

    void tellsTheReactorAndApplies()
    {
        TestedDialog dialog(*m_fixture, false);
        QStringList told;
        dialog.SetApplyAppearanceReactor([&](const kiv::CAppearanceInstancePtr& appearance) {
            told += QString::fromStdString(appearance->GetId());
        });
        dialog.show();
        dialog.clickRow(dialog.system(), "s2");
        dialog.clickRow(dialog.project(), "p1");
        QCOMPARE(told, QStringList({"s2", "p1"}));
        QCOMPARE(dialog.shownName(), QString("p1"));

        QTest::mouseClick(dialog.findChild<QPushButton*>("pushButtonApply"), Qt::LeftButton);
        QCOMPARE(told.takeLast(), QString("p1"));
        QCOMPARE(dialog.applied, QStringList("p1"));
        dialog.doubleClickRow(dialog.system(), "s0");
        QCOMPARE(dialog.applied, QStringList({"p1", "s0"}));
        QCOMPARE(told, QStringList({"s2", "p1", "s0", "s0"}));
        QVERIFY(dialog.isVisible());

        QTest::mouseClick(dialog.ok(), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.keptIds, QStringList("p1"));
        QVERIFY(!dialog.isVisible());
    }

    void selectsWhatTheHostNames()
    {
        TestedDialog dialog(*m_fixture, false);
        QCOMPARE(dialog.GetCurrentMaterialID(), std::wstring());
        dialog.SetCurrentMaterial(L"p1");
        QCOMPARE(dialog.GetCurrentMaterialID(), std::wstring(L"p1"));
        dialog.SetCurrentMaterial(L"s0");
        QCOMPARE(dialog.GetCurrentMaterialID(), std::wstring(L"p1"));

        const auto library = m_fixture->manager().FindUserAppearanceLibrary("Customer Library");
        library->DeleteInstance("p1");
        QCOMPARE(dialog.GetCurrentMaterialID(), std::wstring());
        library->AddInstance(m_fixture->makeAppearance("p9"));
        dialog.UpdateBrowserLibrary();
        QVERIFY(dialog.rowOf(dialog.project(), "p1") < 0);
        dialog.SetCurrentMaterial(L"p9");
        QCOMPARE(dialog.GetCurrentMaterialID(), std::wstring(L"p9"));

        TestedDialog without(*m_fixture, false, "No Such Library");
        without.SetCurrentMaterial(L"p9");
        without.UpdateBrowserLibrary();
        QCOMPARE(without.GetCurrentMaterialID(), std::wstring());
    }

    void searches()
    {
        TestedDialog dialog(*m_fixture, false);
        auto* line = dialog.findChild<QLineEdit*>("LineSearch");
        const auto search = [&](const char* text, bool enter) {
            line->setText(text);
            if (enter)
                QTest::keyClick(line, Qt::Key_Return);
            return dialog.shownName();
        };
        QCOMPARE(search("P1", false), QString("p1"));
        QCOMPARE(search("no such thing", true), QString("p1"));
        // Typing stays in the project's library; only Return goes on to the one below.
        QCOMPARE(search("s2", false), QString("p1"));
        QCOMPARE(search("s2", true), QString("s2"));
        // Found in both: the project's library comes first.
        QCOMPARE(search("tag of", true), QString("p0"));
        QCOMPARE(search("tag of s1", true), QString("s1"));
    }

    void keysOfTheSearchLine()
    {
        TestedDialog dialog(*m_fixture, false);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* search = dialog.findChild<QLineEdit*>("LineSearch");
        dialog.project()->GetTableWidget()->setFocus();
        QTest::keyClick(dialog.project()->GetTableWidget(), Qt::Key_F, Qt::ControlModifier);
        QTRY_VERIFY(search->hasFocus());
        QTest::keyClicks(search, "p1");
        dialog.SetCurrentMaterial(L"p0");
        QTest::keyClick(search, Qt::Key_Return);
        QCOMPARE(dialog.GetCurrentMaterialID(), std::wstring(L"p1"));
        QVERIFY(dialog.isVisible());
        QTest::keyClick(search, Qt::Key_Escape);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QCOMPARE(dialog.keptIds, QStringList());
    }

    void switchesLibraries()
    {
        TestedDialog dialog(*m_fixture, true);
        const auto favorites = m_fixture->manager().FindUserAppearanceLibrary("Favorite Library");
        favorites->AddInstance(m_fixture->makeAppearance("f0"));
        auto* combo = dialog.system()->findChild<QComboBox*>();
        const auto choose = [&](const char* library) { combo->setCurrentIndex(combo->findData(library)); };
        choose("Favorite Library");
        QCOMPARE(dialog.system()->GetCurrentLibrary(), favorites);
        QCOMPARE(dialog.rowOf(dialog.system(), "f0"), 0);
        QCOMPARE(dialog.system()->GetTableWidget()->rowCount(), 1);
        choose("System Library");
        QCOMPARE(dialog.system()->GetCurrentLibrary(), m_fixture->manager().GetSystemLibrary());
        QCOMPARE(dialog.system()->GetTableWidget()->rowCount(), 3);
        emit dialog.system()->OnMaterialLibraryChange("another name");
        QCOMPARE(dialog.system()->GetCurrentLibrary(), favorites);
    }

    void awaitsMissingTextures()
    {
        const auto cloudy = m_fixture->makeAppearance("s9", "late.png");
        cloudy->SetUseDiffuseTexture(true);
        cloudy->SetCloudFlag(true);
        m_fixture->manager().GetSystemLibrary()->AddInstance(cloudy);
        TestedDialog dialog(*m_fixture, true);
        dialog.show();
        const int row = dialog.rowOf(dialog.system(), "s9");
        QTableWidgetItem* picture = dialog.system()->GetTableWidget()->item(row, 0);
        picture->setData(254, false);
        dialog.clickRow(dialog.system(), "s9");
        m_fixture->write("textures/late.png", makePicture(Qt::red, "PNG"));
        QTRY_COMPARE(picture->data(254).toBool(), true);
        const auto isRed = [&] { return dialog.shownPixel().red() > 3 * dialog.shownPixel().green(); };
        QTRY_VERIFY(isRed());
    }

    void closingReleasesWhenAsked()
    {
        for (const bool releases : {false, true}) {
            CMaterialLibraryWidget dialog(&m_fixture->library(), releases, nullptr, false, "Customer Library", false);
            dialog.show();
            QTRY_VERIFY(dialog.findChild<CSceneWidget*>()->GetViewer());
            const unsigned before = kiv::CShaderProgramManager::GetInstance().GetGeneration();
            dialog.close();
            QVERIFY(!dialog.isVisible());
            QCOMPARE(kiv::CShaderProgramManager::GetInstance().GetGeneration(), before + (releases ? 1 : 0));
        }
    }

private:
    std::unique_ptr<DialogFixture> m_fixture;
};

MATERIAL_TEST_MAIN(TestDialog)
#include "TestDialog.moc"
