#include "DialogFixture.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceExchange.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <ColorCtrl.h>
#include <EditStack.h>
#include <EditorFixture.h>
#include <GlobalConfig.h>
#include <ImageCtrl.h>
#include <ImagePreviewerCtrl.h>
#include <KnownByText.h>
#include <LineEditCtrl.h>
#include <MaterialTest.h>
#include <SpinBoxCtrl.h>

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>

using kiv::CAppearanceInstancePtr;

Q_DECLARE_METATYPE(std::function<void(std::unique_ptr<TestedDialog>&)>)

/// Editing in the dialog: what follows a change, taking changes back, and what can only be looked at.
class TestEditing : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        m_dialog.reset();
        CEditStack::Instance().Clear();
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(true);
        m_fixture = std::make_unique<DialogFixture>();
        m_fixture->write("textures/a.png", makePicture(Qt::blue, "PNG"));
        project()->AddInstance(m_fixture->makeTagged("p2"));
        for (const char* editable : {"p0", "p1"})
            project()->FindInstance(editable)->SetEditType(1);
        m_first = documents();
        open();
    }

    void slotsAreKnownByText()
    {
        checkKnownByText(CMaterialLibraryWidget::staticMetaObject,
                         {SIGNAL(MatApply(QString&)), SIGNAL(OnApplyTexture()),
                          SIGNAL(AppearanceEdited(const kiv::CAppearanceInstancePtr&)), SLOT(OnRevocation()),
                          SLOT(OnSelectAppearance(const kiv::CAppearanceInstancePtr&)),
                          SLOT(OnAppearancePropertyChanged(const kiv::CAppearanceInstancePtr&, const kiv::String&)),
                          SLOT(OnTransformEditedData(const kiv::String&)), SLOT(OnUndo()), SLOT(OnApply()),
                          SLOT(OnApplyAppearanceButton()), SLOT(OnSearchValueChanged(const QString&)),
                          SLOT(OnSearchValueChangedSlot()), SLOT(OnMaterialLibraryChange(const kiv::String&)),
                          SLOT(OnVerticalScrollBarChanged(int)), SLOT(OnDoubleClickTableWidget(QModelIndex)),
                          SLOT(onTimerOut()), SLOT(onJsonTimerOut())});
    }

    void readOnlyCannotBeChanged()
    {
        for (const char* id : {"s1", "p2"}) {
            m_dialog->clickRow(*id == 's' ? m_dialog->system() : m_dialog->project(), id);
            QVERIFY(!editor()->isEnabled());
            QCOMPARE(editor()->GetAppearance()->GetId(), kiv::String(id));
            for (QWidget* control : editor()->findChildren<QWidget*>()) {
                control->setFocus();
                QVERIFY(!control->hasFocus());
                QTest::mouseClick(control, Qt::LeftButton);
                dropFile(*control, m_fixture->path("textures/a.png"));
            }
        }
        QCOMPARE(documents(), m_first);
        QVERIFY(m_edited.isEmpty() && CEditStack::Instance().IsEmpty());
    }

    void noSelectionDisables()
    {
        m_dialog->clickRow(m_dialog->project(), "p0");
        QVERIFY(control<CSpinBoxCtrl>("roughness")->isEnabled());
        emit m_dialog->project()->OnSelectAppearance({});
        QTest::keyClick(control<CSpinBoxCtrl>("roughness"), Qt::Key_Up);
        QCOMPARE(documents(), m_first);
    }

    void aChangeIsSeenEverywhere()
    {
        m_dialog->clickRow(m_dialog->project(), "p1");
        const auto isGreen = [](const QColor& color) { return color.green() > 2 * qMax(color.red(), color.blue()); };
        QTRY_VERIFY(m_dialog->shownPixel().isValid());
        QVERIFY(!isGreen(rowPixel("p1")) && !isGreen(m_dialog->shownPixel()));
        chooseColor(*control<CColorCtrl>("diffuse_color"), Qt::green);
        QTRY_VERIFY(isGreen(rowPixel("p1")));
        QTRY_VERIFY2(isGreen(m_dialog->shownPixel()), qPrintable(m_dialog->shownPixel().name()));
        QVERIFY(!isGreen(rowPixel("p0")));
        m_dialog->changed.clear();
        typeAnew(*control<CLineEditCtrl>("name"), "z");
        QCOMPARE(rowName(m_dialog->project(), "p1") + m_dialog->shownName(), QString("zz"));
        QCOMPARE(m_dialog->changed, QStringList("p1 name"));
        QCOMPARE(QSet<QString>(m_edited.begin(), m_edited.end()), QSet<QString>{"p1"});

        m_edited.clear();
        m_dialog->OnRevocation();
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(documents(), m_first);
        QCOMPARE(m_edited, QStringList("p1"));
        m_dialog->show();
        QTRY_VERIFY(!isGreen(rowPixel("p1")));
        QTRY_VERIFY(!isGreen(m_dialog->shownPixel()));
        QCOMPARE(rowName(m_dialog->project(), "p1") + m_dialog->shownName(), QString("p1p1"));
        QCOMPARE(control<CLineEditCtrl>("name")->text(), QString("p1"));
    }

    void theLowerBrowserFollowsToo()
    {
        m_fixture->manager().GetSystemLibrary()->FindInstance("s1")->SetEditType(1);
        m_dialog->clickRow(m_dialog->system(), "s1");
        typeAnew(*control<CLineEditCtrl>("name"), "z");
        QCOMPARE(rowName(m_dialog->system(), "s1"), QString("z"));
    }

    // Otherwise every entry that is ended as people end it would keep all edits and close.
    void returnOnlyEndsAnEntry()
    {
        m_dialog->clickRow(m_dialog->project(), "p0");
        typeAnew(*control<CSpinBoxCtrl>("roughness"), "7");
        typeAnew(*control<CLineEditCtrl>("name"), "z");
        const auto edited = documents();
        const QStringList told = m_edited;
        for (const char* key : {"roughness", "name", "useBaseTexture"}) {
            control<QWidget>(key)->setFocus();
            for (const Qt::Key pressed : {Qt::Key_Return, Qt::Key_Enter})
                QTest::keyClick(control<QWidget>(key), pressed);
        }
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(m_edited, told);
        QCOMPARE(m_dialog->keptIds, QStringList());
        QCOMPARE(documents(), edited);
    }

    void theHostMayReplaceOrDeleteWhatIsEdited()
    {
        m_dialog->clickRow(m_dialog->project(), "p1");
        control<CSpinBoxCtrl>("roughness")->setFocus();
        stepUp("roughness");
        m_dialog->clickRow(m_dialog->project(), "p0");
        stepUp("roughness");
        const auto edited = project()->FindInstance("p0");
        const auto replacement = edited->Clone("p0");
        replacement->SetName("replaced");
        project()->DeleteInstance("p0");
        project()->AddInstance(replacement);
        m_dialog->UpdateBrowserLibrary();
        QCOMPARE(editor()->GetAppearance(), replacement);
        QCOMPARE(m_dialog->shownName() + control<CLineEditCtrl>("name")->text(), QString("replacedreplaced"));
        const QByteArray before = m_fixture->document(edited);
        stepUp("roughness");
        QCOMPARE(m_fixture->document(edited), before);

        project()->DeleteInstance("p0");
        m_dialog->UpdateBrowserLibrary();
        QVERIFY(!editor()->isEnabled());
        // What is gone is skipped: the last edit that can be taken back is the one of the other appearance.
        m_edited.clear();
        QTest::keyClick(m_dialog.get(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_edited, QStringList("p1"));
        QCOMPARE(documents().value("p1"), m_first.value("p1"));
        QVERIFY(CEditStack::Instance().IsEmpty());
    }

    void theNextDialogKeepsTheRecordsOfAnOpenOne()
    {
        m_dialog->clickRow(m_dialog->project(), "p0");
        stepUp("roughness");
        {
            TestedDialog second(*m_fixture, false);
            second.show();
        }
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QCOMPARE(documents(), m_first);
    }

    void twoDialogsKeepTheirEditsApart_data()
    {
        const auto row = testColumns<bool, QStringList>("firstIsKept", "takenBack");
        row("one kept", true, {"p1"});
        row("both cancelled", false, {"p0", "p1"});
    }

    void twoDialogsKeepTheirEditsApart()
    {
        QFETCH(bool, firstIsKept);
        QFETCH(QStringList, takenBack);
        TestedDialog second(*m_fixture, false);
        second.show();
        const auto rename = [](const TestedDialog& dialog, const char* id) {
            dialog.clickRow(dialog.project(), id);
            typeAnew(*dialog.findChild<CAppearanceDynamicEditor*>()->findChild<CLineEditCtrl*>("name"), "z");
        };
        rename(*m_dialog, "p0");
        rename(second, "p1");
        const auto edited = documents();
        m_dialog->done(firstIsKept ? QDialog::Accepted : QDialog::Rejected);
        QCOMPARE(documents().value("p1"), edited.value("p1"));
        QCOMPARE(documents().value("p0"), firstIsKept ? edited.value("p0") : m_first.value("p0"));
        second.reject();
        for (const QString& id : edited.keys())
            QCOMPARE(documents().value(id), (takenBack.contains(id) ? m_first : edited).value(id));
        QVERIFY(CEditStack::Instance().IsEmpty());
    }

    // Each of the line's own steps would be one more change, which the next key would take back.
    void aLineDoesNotUndoByItself()
    {
        m_dialog->clickRow(m_dialog->project(), "p0");
        control<CLineEditCtrl>("name")->setFocus();
        for (const Qt::Key letter : {Qt::Key_X, Qt::Key_Y})
            QTest::keyClick(control<CLineEditCtrl>("name"), letter);
        const auto typed = documents();
        QContextMenuEvent opening(QContextMenuEvent::Mouse, {}, m_dialog->mapToGlobal({}));
        QApplication::sendEvent(control<CLineEditCtrl>("name"), &opening);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu && menu->actions().size() > 3);
        for (const QAction* action : menu->actions())
            QVERIFY2(!action->text().contains("Undo") && !action->text().contains("Redo"), qPrintable(action->text()));
        menu->close();
        QTest::keyClick(control<CLineEditCtrl>("name"), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(documents(), typed);
        for (int i = 0; i < 2; ++i)
            QTest::keyClick(control<CLineEditCtrl>("name"), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(documents(), m_first);
        QVERIFY(CEditStack::Instance().IsEmpty());
    }

    void whatIsExchangedTakesNothingsPlace()
    {
        CAppearanceExchange exchange(m_fixture->library(), *m_dialog);
        const auto system = m_fixture->manager().GetSystemLibrary()->FindInstance("s1");
        m_fixture->write("out/砖 2.5.ggm", "an older one");
        QVERIFY(exchange.Write(system, m_fixture->path("out/砖 2.5")));
        QCOMPARE(m_fixture->read("out/砖 2.5.ggm"), QByteArray("an older one"));
        const QString archive = m_fixture->path("out/砖 2.5_2.ggm");
        const auto read = exchange.Read({archive, archive}, *project());
        QCOMPARE(read.size(), std::size_t(2));
        QVERIFY(read[0]->GetId() != "s1" && read[0]->GetId() != read[1]->GetId());
        QVERIFY(exchange.Complaints().isEmpty());

        const QString halves = QString(79, 'x') + QString::fromUtf8("😀");
        system->SetName(halves.toStdString());
        QCOMPARE(exchange.FileName(*system), QString(79, 'x'));
        const QByteArray key = '"' + QByteArray(5000, 'x') + "\":1";
        m_fixture->write("out/long.json", "{\"template\":\"Generic\"," + key + ',' + key + '}');
        exchange.Read({m_fixture->path("out/long.json")}, *project());
        QVERIFY(exchange.Complaints().size() == 1 && exchange.Complaints().first().size() < 400);
    }

    // Wherever the focus is: a text's own undoing would be one more change.
    void lastChangeIsTakenBackByKeys_data()
    {
        const auto row = testColumns<QString>("focus");
        for (const char* focus : {"roughness", "name", "diffuse_color"})
            row(focus, focus);
    }

    void lastChangeIsTakenBackByKeys()
    {
        QFETCH(QString, focus);
        m_dialog->clickRow(m_dialog->project(), "p0");
        QList<QMap<QString, QByteArray>> states{documents()};
        const auto did = [&] { states += documents(); };
        for (const char* key : {"roughness", "metallic"}) {
            control<QWidget>(key)->setFocus();
            stepUp(key);
            did();
        }
        control<CLineEditCtrl>("name")->setFocus();
        QTest::keyClick(control<CLineEditCtrl>("name"), Qt::Key_X);
        did();
        m_edited.clear();
        control<QWidget>(focus)->setFocus();
        while (states.size() > 1) {
            states.removeLast();
            QVERIFY(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(documents(), states.last());
            QCOMPARE(QApplication::focusWidget(), control<QWidget>(focus));
        }
        QCOMPARE(rowName(m_dialog->project(), "p0"), QString("p0"));
        QCOMPARE(control<CSpinBoxCtrl>("roughness")->GetTypedValue(),
                 editor()->GetAppearance()->ValueOr("roughness", -1.0F));
        QCOMPARE(m_edited, QStringList({"p0", "p0", "p0"}));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_edited.size(), 3);
        QCOMPARE(documents(), m_first);
    }

    void closingKeepsOrTakesBack_data()
    {
        const auto row = testColumns<std::function<void(std::unique_ptr<TestedDialog>&)>, bool>("close", "kept");
        using Dialog = std::unique_ptr<TestedDialog>;
        row(
            "escape", [](Dialog& dialog) { QTest::keyClick(dialog.get(), Qt::Key_Escape); }, false);
        row(
            "window closed", [](Dialog& dialog) { dialog->close(); }, false);
        row(
            "host rejects", [](Dialog& dialog) { dialog->done(QDialog::Rejected); }, false);
        row(
            "host takes back", [](Dialog& dialog) { dialog->OnRevocation(); }, false);
        row(
            "button", [](Dialog& dialog) { QTest::mouseClick(dialog->ok(), Qt::LeftButton); }, true);
        row(
            "host accepts", [](Dialog& dialog) { dialog->accept(); }, true);
        row(
            "dialog destroyed", [](Dialog& dialog) { dialog.reset(); }, true);
    }

    void closingKeepsOrTakesBack()
    {
        QFETCH(std::function<void(std::unique_ptr<TestedDialog>&)>, close);
        QFETCH(bool, kept);
        for (const char* id : {"p0", "p1"}) {
            m_dialog->clickRow(m_dialog->project(), id);
            stepUp("roughness");
            typeAnew(*control<CSpinBoxCtrl>("transparent"), "12.5");
        }
        const auto edited = documents();
        QVERIFY(edited != m_first && !CEditStack::Instance().IsEmpty());
        m_edited.clear();
        close(m_dialog);
        QVERIFY(!m_dialog || !m_dialog->isVisible());
        QCOMPARE(documents(), kept ? edited : m_first);
        m_edited.sort();
        QCOMPARE(m_edited, kept ? QStringList() : QStringList({"p0", "p1"}));
        if (m_dialog)
            QCOMPARE(control<CSpinBoxCtrl>("transparent")->value(), kept ? 12.5 : 100.0);

        // The next dialog takes back nothing of this one.
        open();
        QVERIFY(CEditStack::Instance().IsEmpty());
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QCOMPARE(documents(), kept ? edited : m_first);
    }

protected:
    void finish() override { m_dialog.reset(); }

private:
    void open()
    {
        m_edited.clear();
        m_dialog = std::make_unique<TestedDialog>(*m_fixture, false);
        connect(m_dialog.get(), &CMaterialLibraryWidget::AppearanceEdited,
                [this](const CAppearanceInstancePtr& appearance) { m_edited += appearance->GetId().c_str(); });
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }

    /// The control as it is now: taking back replaces them all.
    template <typename Control>
    Control* control(const QString& key) const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return editor()->findChild<Control*>(key);
    }

    CAppearanceDynamicEditor* editor() const { return m_dialog->findChild<CAppearanceDynamicEditor*>(); }

    void stepUp(const QString& key) const { QTest::keyClick(control<CSpinBoxCtrl>(key), Qt::Key_Up); }

    kiv::CAppearanceLibraryPtr project() const
    {
        return m_fixture->manager().FindUserAppearanceLibrary("Customer Library");
    }

    QMap<QString, QByteArray> documents() const
    {
        QMap<QString, QByteArray> all;
        for (const auto& library : {project(), m_fixture->manager().GetSystemLibrary()}) {
            for (const auto& [id, appearance] : *library)
                all.insert(QString::fromStdString(id), m_fixture->document(appearance));
        }
        return all;
    }

    static QString rowName(const CAppearanceLibraryBrowserCtrl* browser, const QString& id)
    {
        return browser->GetTableWidget()->item(TestedDialog::rowOf(browser, id), 1)->text();
    }

    QColor rowPixel(const QString& id) const
    {
        const QTableWidget* table = m_dialog->project()->GetTableWidget();
        const QTableWidgetItem* picture = table->item(TestedDialog::rowOf(m_dialog->project(), id), 0);
        return table->viewport()->grab().toImage().pixelColor(table->visualItemRect(picture).center());
    }

    std::unique_ptr<DialogFixture> m_fixture;
    std::unique_ptr<TestedDialog> m_dialog;
    QMap<QString, QByteArray> m_first;
    QStringList m_edited;
};

MATERIAL_TEST_MAIN(TestEditing)
#include "TestEditing.moc"
