#include "DialogFixture.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <EditStack.h>
#include <GlobalConfig.h>
#include <LineEditCtrl.h>
#include <MaterialTest.h>
#include <ModalMeeting.h>
#include <SpinBoxCtrl.h>

#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>

#include <random>

using kiv::CAppearanceInstancePtr;

namespace {

constexpr int OperationCount = 2000;
constexpr std::size_t MaterialLimit = 40;  // comparing all after each operation stays quick

/// The dialog with what its menus do open to the test.
class OperatedDialog : public TestedDialog {
public:
    explicit OperatedDialog(DialogFixture& fixture) : TestedDialog(fixture, false) {}
    using CMaterialLibraryWidget::AddFavoriteAppearanceFunc;
    using CMaterialLibraryWidget::AppearanceDeletedFunc;
    using CMaterialLibraryWidget::CopyandAddAppearanceFunc;
    using CMaterialLibraryWidget::OnAppearanceTypeChanged;
    using CMaterialLibraryWidget::OnImportAppearances;
    using CMaterialLibraryWidget::OnUndo;
};

}  // namespace

/// Many operations in an order that nobody thought of.
class TestRandomOperations : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_dialog.reset();
        CEditStack::Instance().Clear();
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(true);
        m_fixture = std::make_unique<DialogFixture>();
        m_fixture->write("textures/a.png", makePicture(Qt::blue, "PNG"));
        const auto packed = m_fixture->makeAppearance("packed", "a.png");
        QVERIFY(kiv::CAppearanceParser(m_fixture->manager()).AppearanceToZipFile(packed, m_fixture->widePath("a.ggm")));
        for (const char* id : {"p0", "p1", "红砖\"/\\"}) {
            if (!project()->FindInstance(id))
                project()->AddInstance(m_fixture->makeAppearance(id, "a.png"));
            project()->FindInstance(id)->SetEditType(1);
        }
        m_dialog = std::make_unique<OperatedDialog>(*m_fixture);
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }

    void cancelGivesBackTheOpeningState_data()
    {
        const auto row = testColumns<unsigned, bool>("seed", "kept");
        row("cancelled", 20261121U, false);
        row("kept", 4711U, true);
    }

    void cancelGivesBackTheOpeningState()
    {
        QFETCH(unsigned, seed);
        QFETCH(bool, kept);
        m_random.seed(seed);
        ModalMeeting<QMessageBox> duplicates([](QMessageBox& box) { box.accept(); }, true);
        QVector<Documents> states{documents()};
        for (int i = 0; i < OperationCount; ++i) {
            const int operation = pick(8);
            if (operation == 0 && states.size() > 1) {
                m_dialog->OnUndo();
                states.removeLast();
                QVERIFY2(documents() == states.last(), qPrintable(QString("seed %1, step %2").arg(seed).arg(i)));
            } else {
                const int records = operate(operation);
                if (records > 0)
                    states.append(documents());
            }
            QCOMPARE(m_dialog->project()->GetTableWidget()->rowCount(), int(project()->count()));
        }
        QVERIFY(states.size() > 100);
        if (kept) {
            const Documents last = documents();
            QTest::mouseClick(m_dialog->ok(), Qt::LeftButton);
            QCOMPARE(documents(), last);
            QCOMPARE(reloaded(last), last);
        } else {
            m_dialog->close();
            QCOMPARE(documents(), states.first());
        }
    }

protected:
    void finish() override { m_dialog.reset(); }

private:
    using Documents = QMap<QString, QByteArray>;

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

    CAppearanceInstancePtr pickFrom(const kiv::CAppearanceLibrary& library)
    {
        return library.count() == 0 ? nullptr : std::next(library.begin(), pick(int(library.count())))->second;
    }

    /// How many records it left: an operation that does not apply leaves none.
    int operate(int operation)
    {
        auto target = pickFrom(*project());
        const bool isFull = project()->count() >= MaterialLimit;
        if (!target || (operation <= 2 && !isFull)) {
            const bool ofProject = target && operation == 1;
            return m_dialog->CopyandAddAppearanceFunc(ofProject ? target
                                                                : pickFrom(*m_fixture->manager().GetSystemLibrary()))
                       ? 1
                       : 0;
        }
        switch (operation) {
        case 3:
            m_dialog->AppearanceDeletedFunc(target);
            return 1;
        case 4:
            return changeType(target);
        case 5:
            return edit(target);
        case 6:
            if (!isFull)
                m_dialog->OnImportAppearances({m_fixture->path("a.ggm")});
            return isFull ? 0 : 1;
        case 7:
            m_dialog->AddFavoriteAppearanceFunc(target, "Stone");
            return 0;
        default:
            m_dialog->AppearanceDeletedFunc(target);
            return 1;
        }
    }

    int changeType(CAppearanceInstancePtr target)
    {
        const char* const types[] = {"Generic", "Metal", "Wood", "Glass", "Paint", "Stone"};
        const kiv::String type = types[pick(6)];
        const bool isOther = target->GetCategory() != type;
        m_dialog->OnAppearanceTypeChanged(target, type);
        return isOther;
    }

    int edit(const CAppearanceInstancePtr& target)
    {
        m_dialog->project()->SelectAppearance(target);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        auto* editor = m_dialog->findChild<CAppearanceDynamicEditor*>();
        const auto before = documents();
        if (auto* number = editor->findChild<CSpinBoxCtrl*>("roughness"))
            number->setValue(pick(100));
        return documents() != before;
    }

    /// What a program that starts anew reads of what this one wrote.
    Documents reloaded(const Documents& written)
    {
        Documents read;
        kiv::CAppearanceParser parser(m_fixture->manager());
        for (const QByteArray& document : written) {
            const auto appearance = parser.AppearanceFromString(document.toStdString());
            if (appearance)
                read.insert(QString::fromStdString(appearance->GetId()), m_fixture->document(appearance));
        }
        return read;
    }

    kiv::CAppearanceLibraryPtr project() const
    {
        return m_fixture->manager().FindUserAppearanceLibrary("Customer Library");
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
    std::mt19937 m_random;
};

MATERIAL_TEST_MAIN(TestRandomOperations)
#include "TestRandomOperations.moc"
