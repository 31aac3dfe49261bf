#include "DialogFixture.h"

#include <AppearanceDynamicEditor.h>
#include <AppearanceLibraryBrowserCtrl.h>
#include <ColorCtrl.h>
#include <EditStack.h>
#include <EditorFixture.h>
#include <GlobalConfig.h>
#include <ImageCtrl.h>
#include <ImagePreviewerCtrl.h>
#include <LineEditCtrl.h>
#include <MaterialTest.h>
#include <SpinBoxCtrl.h>

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

using kiv::CAppearanceInstancePtr;

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

    void readOnlyCannotBeChanged_data()
    {
        const auto row = testColumns<QString>("id");
        row("of the system library", "s1");
        row("of the project", "p2");
    }

    void readOnlyCannotBeChanged()
    {
        QFETCH(QString, id);
        m_dialog->clickRow(id.startsWith('s') ? m_dialog->system() : m_dialog->project(), id);
        const auto* editor = m_dialog->findChild<CAppearanceDynamicEditor*>();
        QVERIFY(!editor->isEnabled());
        QCOMPARE(editor->GetAppearance()->GetId(), id.toStdString());
        for (QWidget* control : editor->findChildren<QWidget*>()) {
            control->setFocus();
            QVERIFY(!control->hasFocus());
            QTest::mouseClick(control, Qt::LeftButton);
            dropFile(*control, m_fixture->path("textures/a.png"));
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
        typeAnew(*control<CLineEditCtrl>("name"), "green");
        QCOMPARE(rowName("p1"), QString("green"));
        QCOMPARE(m_dialog->shownName(), QString("green"));
        QCOMPARE(QSet<QString>(m_edited.begin(), m_edited.end()), QSet<QString>{"p1"});

        m_dialog->OnRevocation();
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(documents(), m_first);
        m_dialog->show();
        QTRY_VERIFY(!isGreen(rowPixel("p1")));
        QCOMPARE(rowName("p1"), QString("p1"));
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
            control<CSpinBoxCtrl>(key)->setFocus();
            QTest::keyClick(control<CSpinBoxCtrl>(key), Qt::Key_Up);
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
        QCOMPARE(rowName("p0"), QString("p0"));
        QCOMPARE(control<CSpinBoxCtrl>("roughness")->GetTypedValue(), shown()->ValueOr("roughness", -1.0F));
        QCOMPARE(m_edited, QStringList({"p0", "p0", "p0"}));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_edited.size(), 3);
        QCOMPARE(documents(), m_first);
    }

    void closingKeepsOrTakesBack_data()
    {
        const auto row = testColumns<QString, bool>("way", "kept");
        row("escape", "escape", false);
        row("window closed", "close", false);
        row("host", "host", false);
        row("button", "ok", true);
        row("dialog destroyed", "destroy", true);
    }

    void closingKeepsOrTakesBack()
    {
        QFETCH(QString, way);
        QFETCH(bool, kept);
        for (const char* id : {"p0", "p1"}) {
            m_dialog->clickRow(m_dialog->project(), id);
            QTest::keyClick(control<CSpinBoxCtrl>("roughness"), Qt::Key_Up);
            typeAnew(*control<CSpinBoxCtrl>("transparent"), "12.5");
        }
        const auto edited = documents();
        QVERIFY(edited != m_first && !CEditStack::Instance().IsEmpty());
        if (way == "escape")
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        else if (way == "close")
            m_dialog->close();
        else if (way == "host")
            m_dialog->OnRevocation();
        else if (way == "ok")
            QTest::mouseClick(m_dialog->ok(), Qt::LeftButton);
        else
            m_dialog.reset();
        QVERIFY(!m_dialog || !m_dialog->isVisible());
        QCOMPARE(documents(), kept ? edited : m_first);

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
        return m_dialog->findChild<CAppearanceDynamicEditor*>()->findChild<Control*>(key);
    }

    CAppearanceInstancePtr shown() const { return m_dialog->findChild<CAppearanceDynamicEditor*>()->GetAppearance(); }

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

    QTableWidgetItem* item(const QString& id, int column) const
    {
        return m_dialog->project()->GetTableWidget()->item(TestedDialog::rowOf(m_dialog->project(), id), column);
    }

    QString rowName(const QString& id) const { return item(id, 1)->text(); }

    QColor rowPixel(const QString& id) const
    {
        const QTableWidget* table = m_dialog->project()->GetTableWidget();
        return table->viewport()->grab().toImage().pixelColor(table->visualItemRect(item(id, 0)).center());
    }

    std::unique_ptr<DialogFixture> m_fixture;
    std::unique_ptr<TestedDialog> m_dialog;
    QMap<QString, QByteArray> m_first;
    QStringList m_edited;
};

MATERIAL_TEST_MAIN(TestEditing)
#include "TestEditing.moc"
