#include "DialogFixture.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <EditStack.h>
#include <FavoriteCategoryDlg.h>
#include <GlobalConfig.h>
#include <KnownByText.h>
#include <LineEditCtrl.h>
#include <MaterialTest.h>
#include <ModalMeeting.h>
#include <SpinBoxCtrl.h>

#include <QDialogButtonBox>
#include <QEventLoop>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>

using kiv::CAppearanceInstancePtr;

namespace {

/// The dialog as a host with a building has it.
class OperatedDialog : public TestedDialog {
public:
    OperatedDialog(DialogFixture& fixture, const std::string& projectLibrary)
        : TestedDialog(fixture, true, projectLibrary)
    {
    }
    using CMaterialLibraryWidget::AppearanceRemoveFunc;
    using CMaterialLibraryWidget::CopyandAddAppearanceFunc;
    using CMaterialLibraryWidget::OnAppearanceTypeChanged;
    using CMaterialLibraryWidget::OnExportAppearances;
    using CMaterialLibraryWidget::OnImportAppearances;

    int uses = 0;
    int asked = 0;

protected:
    int CountAppearanceUses(const CAppearanceInstancePtr&) override
    {
        ++asked;
        return uses;
    }
};

/// Answers the next question or hint and remembers its text.
class Answered {
public:
    explicit Answered(QMessageBox::StandardButton button)
        : m_meeting(
              [this, button](QMessageBox& box) {
                  // Closed before the window manager knows it, it would leave nobody active.
                  if (!box.isActiveWindow() || !box.button(button))
                      return;
                  text = box.text();
                  ++count;
                  QTest::mouseClick(box.button(button), Qt::LeftButton);
              },
              true)
    {
    }
    QString text;
    int count = 0;

private:
    ModalMeeting<QMessageBox> m_meeting;
};

const QString Long(4000, 'x');

}  // namespace

/// What a person does to materials in the dialog, and taking it back.
class TestOperations : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_dialog.reset();
        CEditStack::Instance().Clear();
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(true);
        m_fixture = std::make_unique<DialogFixture>();
        m_fixture->write("textures/a.png", makePicture(Qt::blue, "PNG"));
        addToProject("textured", "a.png");
        for (const char* id : {"p0", "p1"})
            project()->FindInstance(id)->SetEditType(1);
        open();
    }

    void slotsAreKnownByText()
    {
        checkKnownByText(CMaterialLibraryWidget::staticMetaObject,
                         {SLOT(OnCopyandAddApperance(const kiv::CAppearanceInstancePtr&)),
                          SLOT(OnAddFavoriteAppearance(const kiv::CAppearanceInstancePtr&, const kiv::String&)),
                          SLOT(OnDeleteApperance(kiv::CAppearanceInstancePtr&)),
                          SLOT(OnRemoveApperance(kiv::CAppearanceInstancePtr&)),
                          SLOT(OnAppearanceTypeChanged(kiv::CAppearanceInstancePtr&, const kiv::String&)),
                          SLOT(OnDownloadAppearance(const QString&))});
    }

    void everythingIsTakenBackStepByStepAndAtOnce_data()
    {
        const auto row = testColumns<bool>("stepByStep");
        row("step by step", true);
        row("at once", false);
    }

    void everythingIsTakenBackStepByStepAndAtOnce()
    {
        QFETCH(bool, stepByStep);
        QList<Documents> states{documents()};
        const auto did = [&] { states += documents(); };

        copyByKey(m_dialog->system(), "s1");
        const QString copy = m_dialog->project()->GetCurSel();
        QCOMPARE(states.first().contains(copy), false);
        did();
        QTest::keyClick(control<CSpinBoxCtrl>("roughness"), Qt::Key_Up);
        did();
        m_dialog->clickRow(m_dialog->project(), copy);
        QTest::keyClick(table(m_dialog->project()), Qt::Key_F2);
        QVERIFY(control<CLineEditCtrl>("name")->hasFocus());
        QCOMPARE(control<CLineEditCtrl>("name")->selectedText(), QString("s1"));
        QTest::keyClick(control<CLineEditCtrl>("name"), Qt::Key_Y);
        did();
        QTest::keyClick(control<CLineEditCtrl>("name"), Qt::Key_Return);
        QVERIFY(table(m_dialog->project())->hasFocus());
        changeType(copy, "Wood");
        did();
        copyByKey(m_dialog->project(), "textured");
        did();
        deleteByKey(copy);
        did();
        deleteByKey("p0");
        did();
        QCOMPARE(states.last().size(), states.first().size());

        if (stepByStep) {
            while (states.size() > 1) {
                states.removeLast();
                undoByKey();
                QCOMPARE(documents(), states.last());
                checkRows();
            }
            QVERIFY(CEditStack::Instance().IsEmpty());
        }
        m_dialog->OnRevocation();
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(documents(), states.first());
        checkRows();
    }

    void keptEditsCannotBeTakenBack()
    {
        for (int i = 0; i < 3; ++i)
            copyByKey(m_dialog->system(), "s1");
        const QString last = m_dialog->project()->GetCurSel();
        const Documents kept = documents();
        QTest::mouseClick(m_dialog->ok(), Qt::LeftButton);
        QCOMPARE(m_dialog->keptIds, QStringList(last));
        QVERIFY(CEditStack::Instance().IsEmpty() && !m_dialog->isVisible());
        m_dialog->OnRevocation();
        QCOMPARE(documents(), kept);
    }

    void copiesAreTheProjectsOwn()
    {
        const auto source = m_fixture->manager().GetSystemLibrary()->FindInstance("s2");
        const auto copy = m_dialog->CopyandAddAppearanceFunc(source);
        QVERIFY(copy && copy != source && project()->FindInstance(copy->GetId()) == copy);
        QCOMPARE(copy->GetEditType(), 1);
        QCOMPARE(m_dialog->project()->GetCurSel().toStdString(), copy->GetId());
        QCOMPARE(m_dialog->shownName(), QString("s2"));
        QVERIFY(editor()->isEnabled());
        QVERIFY(!m_dialog->CopyandAddAppearanceFunc({}));
    }

    void projectsOfAnotherNameGetTheirCopies()
    {
        auto own = std::make_shared<kiv::CAppearanceLibrary>();
        own->SetId("House");
        own->SetName("House");
        m_fixture->manager().AddUserAppearanceLibrary(own);
        const std::size_t others = project()->count();
        open("House");
        copyByKey(m_dialog->system(), "s1");
        QCOMPARE(own->count(), std::size_t(1));
        QCOMPARE(project()->count(), others);
        m_dialog->OnRevocation();
        QCOMPARE(own->count(), std::size_t(0));
    }

    void deletingAsksOnlyWhenItMatters_data()
    {
        const auto row = testColumns<int, int, bool, bool>("editType", "uses", "asked", "recorded");
        row("unused", 1, 0, false, true);
        row("used", 1, 3, true, true);
        row("read-only", 0, 0, true, false);
        row("kept by its owner", 2, 0, true, false);
    }

    void deletingAsksOnlyWhenItMatters()
    {
        QFETCH(int, editType);
        QFETCH(int, uses);
        QFETCH(bool, asked);
        QFETCH(bool, recorded);
        project()->FindInstance("p1")->SetEditType(editType);
        m_dialog->uses = uses;
        const Documents before = documents();
        if (asked) {
            Answered no(QMessageBox::No);
            deleteByKey("p1");
            QCOMPARE(no.count, 1);
            QVERIFY2(uses == 0 || no.text.contains(QString::number(uses)), qPrintable(no.text));
            QCOMPARE(documents(), before);
        }
        Answered yes(QMessageBox::Yes);
        deleteByKey("p1");
        QCOMPARE(yes.count, int(asked));
        QVERIFY(!project()->FindInstance("p1"));
        QCOMPARE(CEditStack::Instance().IsEmpty(), !recorded);
        QVERIFY(!editor()->isEnabled());
        QCOMPARE(m_dialog->GetCurrentMaterialID(), std::wstring());
        m_dialog->applied.clear();
        emit m_dialog->findChild<QPushButton*>("pushButtonApply")->pressed();
        QCOMPARE(m_dialog->applied, QStringList());
        m_dialog->OnRevocation();
        QCOMPARE(documents() == before, recorded);
    }

    void typeChangeKeepsWhatBothHave()
    {
        const auto appearance = project()->FindInstance("textured");
        appearance->SetEditType(1);
        appearance->SetDiffuse({0.1F, 0.2F, 0.3F, 1});
        const Documents before = documents();
        changeType("textured", "Metal");
        QCOMPARE(project()->FindInstance("textured"), appearance);
        QCOMPARE(appearance->GetTemplateName() + appearance->GetCategory(), kiv::String("MetalMetal"));
        QCOMPARE(appearance->GetDiffuse().x, 0.1F);
        QCOMPARE(appearance->GetDiffuseTexture()->GetTextureFile(), kiv::String("a.png"));
        QCOMPARE(appearance->ValueOr("metallic", 0.0F), 1.0F);
        QCOMPARE(appearance->ValueOr("useEnvironmentMap", false), true);
        QCOMPARE(m_dialog->project()->GetCurSel(), QString("textured"));
        checkRows();

        const Documents changed = documents();
        changeType("textured", "Metal");
        Answered hint(QMessageBox::Ok);
        changeType("textured", "No such type");
        QCOMPARE(hint.count, 1);
        QCOMPARE(documents(), changed);
        undoByKey();
        QCOMPARE(documents(), before);
        QVERIFY(CEditStack::Instance().IsEmpty());
    }

    void favouritesSurviveTheirSourceAndCopiesTheirFavourite()
    {
        Answered duplicate(QMessageBox::Ok);
        collect("textured");
        QVERIFY(QFile::remove(m_fixture->path("textures/a.png")));
        QCOMPARE(favorites()->count(), std::size_t(1));
        const auto favorite = favorites()->begin()->second;
        QVERIFY(QFile::exists(textureOf(*favorite)));

        m_fixture->write("textures/a.png", makePicture(Qt::blue, "PNG"));
        collect("textured");
        QCOMPARE(duplicate.count, 1);
        QCOMPARE(favorites()->count(), std::size_t(1));

        open();
        QTRY_COMPARE(favorites()->count(), std::size_t(1));
        QTRY_VERIFY(!QApplication::activeModalWidget());
        emit m_dialog->system()->OnMaterialLibraryChange("Favorite Library");
        const QString id = QString::fromStdString(favorites()->begin()->first);
        copyByKey(m_dialog->system(), id);
        QTest::mouseClick(m_dialog->ok(), Qt::LeftButton);
        open();
        emit m_dialog->system()->OnMaterialLibraryChange("Favorite Library");
        QTRY_VERIFY(m_dialog->rowOf(m_dialog->system(), id) >= 0);
        QTRY_VERIFY(!QApplication::activeModalWidget());
        Answered yes(QMessageBox::Yes);
        press(m_dialog->system(), id, Qt::Key_Delete);
        QCOMPARE(yes.count, 1);
        QCOMPARE(favorites()->count(), std::size_t(0));
        for (const auto& [projectId, appearance] : *project())
            QVERIFY2(QFile::exists(textureOf(*appearance)) || appearance->GetName() != "textured", projectId.c_str());
    }

    void archivesTravelWithTheirTextures()
    {
        const QString path = m_fixture->path("out/archive.ggm");
        QVERIFY(QDir().mkpath(m_fixture->path("out")));
        ModalMeeting<QFileDialog> name([&](QFileDialog& files) {
            files.selectFile(path);
            QMetaObject::invokeMethod(&files, "accept");
        });
        m_dialog->OnExportAppearances({project()->FindInstance("textured")});
        QVERIFY(QFile::exists(path));
        QVERIFY(QFile::remove(m_fixture->path("textures/a.png")));
        const Documents before = documents();

        m_fixture->write("out/half.json", R"({"id":"half","name":)");
        m_fixture->write("out/half.ggm", "no archive");
        m_fixture->write("out/other.txt", "{}");
        Answered hint(QMessageBox::Ok);
        m_dialog->OnImportAppearances({m_fixture->path("out/half.json"), path, m_fixture->path("out/half.ggm"),
                                       m_fixture->path("out/other.txt"), m_fixture->path("out/missing.json")});
        QCOMPARE(hint.count, 1);
        for (const char* file : {"half.json", "half.ggm", "other.txt", "missing.json"})
            QVERIFY2(hint.text.contains(file), qPrintable(hint.text));
        QCOMPARE(documents().size(), before.size() + 1);
        const auto imported = project()->FindInstance(m_dialog->project()->GetCurSel().toStdString());
        QVERIFY(imported && imported->GetId() != "textured" && imported->GetEditType() == 1);
        QCOMPARE(imported->GetName(), kiv::String("textured"));
        QVERIFY(QFile::exists(textureOf(*imported)));
        m_dialog->OnRevocation();
        QCOMPARE(documents(), before);
    }

    void manyAreExportedUnderFreeNames()
    {
        QVERIFY(QDir().mkpath(m_fixture->path("out")));
        m_fixture->write("out/p0.ggm", "an older one");
        project()->FindInstance("p1")->SetName("a/b\\c:*?\"<>| ");
        const auto lost = project()->FindInstance("textured");
        lost->GetDiffuseTexture()->SetTextureFile("gone.png");
        ModalMeeting<QFileDialog> folder([&](QFileDialog& files) {
            files.setDirectory(m_fixture->path("out"));
            QMetaObject::invokeMethod(&files, "accept");
        });
        Answered hint(QMessageBox::Ok);
        m_dialog->OnExportAppearances(
            {project()->FindInstance("p0"), project()->FindInstance("p1"), project()->FindInstance("p0"), lost});
        const QStringList written = QDir(m_fixture->path("out")).entryList(QDir::Files, QDir::Name);
        QCOMPARE(written, QStringList({"a_b_c_______.ggm", "p0.ggm", "p0_2.ggm", "p0_3.ggm", "textured.ggm"}));
        QCOMPARE(m_fixture->read("out/p0.ggm"), QByteArray("an older one"));
        QVERIFY2(hint.text.contains("textured.ggm"), qPrintable(hint.text));
    }

    void theHostMayTakeTheLibraryAway()
    {
        m_dialog->clickRow(m_dialog->project(), "p0");
        QVERIFY(m_fixture->manager().DeleteUserAppearanceLibrary("Customer Library"));
        Answered hint(QMessageBox::Ok);
        copyByKey(m_dialog->system(), "s1");
        QCOMPARE(hint.count, 1);
        m_dialog->OnImportAppearances({m_fixture->path("textures/a.png")});
        QCOMPARE(hint.count, 2);
        deleteByKey("p0");
        changeType("p0", "Wood");
        m_dialog->UpdateBrowserLibrary();
        m_dialog->OnRevocation();
        QVERIFY(!m_fixture->manager().FindUserAppearanceLibrary("Customer Library"));
    }

    // The status timer, the network or the host's own timers may close and delete it at any time.
    void theDialogMayGoWhileItAsks_data()
    {
        const auto row = testColumns<bool>("aboutFiles");
        row("question", false);
        row("file dialog", true);
    }

    void theDialogMayGoWhileItAsks()
    {
        QFETCH(bool, aboutFiles);
        m_dialog->uses = 1;
        m_dialog->clickRow(m_dialog->project(), "p0");
        const Documents before = documents();
        ModalMeeting<QDialog> going([&](QDialog&) { m_dialog.reset(); });
        if (aboutFiles)
            m_dialog->OnImportAppearances({});
        else
            m_dialog->project()->OnMenuDeleteAppearance();
        QVERIFY(going.met && !m_dialog);
        QCOMPARE(documents(), before);
    }

    void theProjectMayGoWhileFilesAreChosen()
    {
        ModalMeeting<QFileDialog> going([&](QFileDialog& files) {
            m_fixture->manager().DeleteUserAppearanceLibrary("Customer Library");
            files.selectFile(m_fixture->path("textures/a.png"));
            QMetaObject::invokeMethod(&files, "accept");
        });
        Answered hint(QMessageBox::Ok);
        m_dialog->OnImportAppearances({});
        QVERIFY(going.met);
        QCOMPARE(hint.count, 1);
    }

    void renamingCanBeGivenUp()
    {
        const Documents before = documents();
        press(m_dialog->project(), "p0", Qt::Key_F2);
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_B, Qt::Key_Escape})
            QTest::keyClick(control<CLineEditCtrl>("name"), key);
        QVERIFY(m_dialog->isVisible());
        QVERIFY(table(m_dialog->project())->hasFocus());
        QCOMPARE(documents(), before);
        m_dialog->close();
        QCOMPARE(documents(), before);
    }

    void anyIdWillDo_data()
    {
        const auto row = testColumns<QString>("id");
        row("quotes", "a\"b'c");
        row("separators", "../a/b\\c");
        row("long", Long);
        row("Chinese", QString::fromUtf8("外墙“红砖”"));
    }

    void anyIdWillDo()
    {
        QFETCH(QString, id);
        addToProject(id.toStdString(), "a.png");
        m_dialog->UpdateBrowserLibrary();
        const Documents before = documents();
        m_dialog->SetCurrentMaterial(id.toStdWString());
        copyByKey(m_dialog->project(), id);
        collect(id);
        QCOMPARE(favorites()->count(), std::size_t(1));
        changeType(id, "Paint");
        deleteByKey(id);
        QVERIFY(!documents().contains(id));
        m_dialog->OnRevocation();
        QCOMPARE(documents(), before);
    }

protected:
    void finish() override { m_dialog.reset(); }

private:
    using Documents = QMap<QString, QByteArray>;

    void open(const std::string& projectLibrary = "Customer Library")
    {
        m_dialog = std::make_unique<OperatedDialog>(*m_fixture, projectLibrary);
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }

    void addToProject(const kiv::String& id, const kiv::String& texture)
    {
        const auto appearance = m_fixture->makeAppearance(id, texture);
        appearance->SetEditType(1);
        project()->AddInstance(appearance);
    }

    static QTableWidget* table(const CAppearanceLibraryBrowserCtrl* browser) { return browser->GetTableWidget(); }

    // Whatever was open before may still be active.
    void press(const CAppearanceLibraryBrowserCtrl* browser, const QString& id, Qt::Key key,
               Qt::KeyboardModifiers modifiers = {}) const
    {
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        m_dialog->clickRow(browser, id);
        table(browser)->setFocus();
        QTRY_VERIFY(table(browser)->hasFocus());
        QTest::keyClick(table(browser), key, modifiers);
    }

    void copyByKey(const CAppearanceLibraryBrowserCtrl* browser, const QString& id) const
    {
        press(browser, id, Qt::Key_C, Qt::ControlModifier);
    }

    void undoByKey() const
    {
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        QTest::keyClick(m_dialog.get(), Qt::Key_Z, Qt::ControlModifier);
    }

    void deleteByKey(const QString& id) const { press(m_dialog->project(), id, Qt::Key_Delete); }

    void collect(const QString& id) const
    {
        press(m_dialog->project(), id, Qt::Key_D, Qt::ControlModifier);
        auto* dialog = qobject_cast<CFavoriteCategoryDlg*>(QApplication::activeModalWidget());
        QVERIFY(dialog && QTest::qWaitForWindowActive(dialog));
        // From within an event loop, as clicks come: what follows may open a box, and the chooser outlives that.
        QEventLoop loop;
        QTimer::singleShot(0, dialog, [&] {
            QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
            loop.quit();
        });
        loop.exec();
    }

    void changeType(const QString& id, const char* type) const
    {
        auto appearance = m_dialog->project()->GetCurrentLibrary()->FindInstance(id.toStdString());
        QVERIFY(appearance);
        m_dialog->OnAppearanceTypeChanged(appearance, type);
    }

    /// The project's browser shows what the project has.
    void checkRows() const
    {
        QCOMPARE(table(m_dialog->project())->rowCount(), int(project()->count()));
        for (const auto& [id, appearance] : *project()) {
            const int row = m_dialog->rowOf(m_dialog->project(), QString::fromStdString(id));
            QVERIFY2(row >= 0, id.c_str());
            QCOMPARE(table(m_dialog->project())->item(row, 1)->text(), QString::fromStdString(appearance->GetName()));
        }
    }

    template <typename Control>
    Control* control(const QString& key) const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return editor()->findChild<Control*>(key);
    }

    CAppearanceDynamicEditor* editor() const { return m_dialog->findChild<CAppearanceDynamicEditor*>(); }

    QString textureOf(const kiv::CAppearanceInstance& appearance) const
    {
        const kiv::String file = appearance.GetDiffuseTexture()->GetTextureFile();
        return QString::fromStdString(m_fixture->manager().ResolvePath(file));
    }

    kiv::CAppearanceLibraryPtr project() const
    {
        return m_fixture->manager().FindUserAppearanceLibrary("Customer Library");
    }
    kiv::CAppearanceLibraryPtr favorites() const
    {
        return m_fixture->manager().FindUserAppearanceLibrary("Favorite Library");
    }

    Documents documents() const
    {
        Documents all;
        for (const auto& [id, appearance] : *project())
            all.insert(QString::fromStdString(id), m_fixture->document(appearance));
        return all;
    }

    std::unique_ptr<DialogFixture> m_fixture;
    std::unique_ptr<OperatedDialog> m_dialog;
};

MATERIAL_TEST_MAIN(TestOperations)
#include "TestOperations.moc"
