#include "EditorFixture.h"

#include <ColorCtrl.h>
#include <DynamicWidget.h>
#include <GlobalConfig.h>
#include <GroupBoxCtrl.h>
#include <ImageCtrl.h>
#include <ImagePreviewerCtrl.h>
#include <LineEditCtrl.h>
#include <SpinBoxCtrl.h>

#include <MaterialTest.h>
#include <ModalMeeting.h>

#include <QColorDialog>
#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QToolButton>

#include <malloc.h>

using kiv::CAppearanceInstancePtr;
using kiv::CAppearanceUIElement;

namespace {

using Elements = std::vector<CAppearanceUIElement>;

/// Every element that has a control of its own, in the order of the description.
void collect(const Elements& elements, Elements& found)
{
    for (const CAppearanceUIElement& element : elements) {
        if (element.HasAttribute("id"))
            found.push_back(element);
        collect(element.GetStackPanels(), found);
    }
}

Elements elementsOf(const kiv::CAppearanceInstance& appearance)
{
    Elements found;
    collect(appearance.GetTemplate()->GetUi(), found);
    return found;
}

/// The keys whose values differ.
QStringList changedKeys(const QByteArray& before, const QByteArray& after)
{
    const QJsonObject was = QJsonDocument::fromJson(before).object();
    const QJsonObject is = QJsonDocument::fromJson(after).object();
    QStringList changed;
    for (const QString& key : is.keys()) {
        if (was.value(key) != is.value(key))
            changed += key;
    }
    return was.size() == is.size() ? changed : QStringList("keys came or went");
}

std::size_t allocatedBytes()
{
    return mallinfo2().uordblks;
}

/// With one more chunk, whose checksum is wrong: a reader tells so, and reads on.
QByteArray withWarning(QByteArray png)
{
    constexpr int afterHeader = 33;
    return png.insert(afterHeader, QByteArray("\0\0\0\3tEXta\0b\0\0\0\0", 15));
}

Qt::CursorShape s_cursor = Qt::ArrowCursor;

/// Notes the cursor of the moment when a warning comes.
void noteCursor(QtMsgType, const QMessageLogContext&, const QString&)
{
    if (const QCursor* cursor = QGuiApplication::overrideCursor())
        s_cursor = cursor->shape();
}

}  // namespace

/// The panel: what it is built of, what its controls do to the appearance, and what it tells.
class TestDynamicEditor : public MaterialTest {
    Q_OBJECT

private slots:
    void init()
    {
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(true);
        m_fixture = std::make_unique<EditorFixture>();
    }

    void everyControlEditsWhatItShows_data()
    {
        const auto row = testColumns<QString>("type");
        const QDir shipped(MATERIAL_TESTS_DIR "/../data/templates");
        QStringList types = shipped.entryList({"*.json"}, QDir::Files);
        types.removeOne("Texture.json");
        types.removeOne("SimpleTexture.json");
        QCOMPARE(types.size(), 20);
        for (const QString& type : types)
            row(qPrintable(type), type.chopped(5));
    }

    void everyControlEditsWhatItShows()
    {
        QFETCH(QString, type);
        m_fixture->write("texts.json", R"({"language":"zh","ui":{"Opacity":"不透明度","%":"％","Diffuse":"R&D",
                                          "Metallic":"<b>x</b>","The base colour.":"<i>a</i> & <b>b</b>"}})");
        kiv::CParseError error;
        QVERIFY(m_fixture->manager().LoadTexts(m_fixture->widePath("texts.json"), error));
        const auto appearance = m_fixture->add(type.toStdString(), "edited");
        const QByteArray first = m_fixture->document(appearance);
        m_fixture->edit(appearance);
        QCOMPARE(m_fixture->takeEvents(), QString());
        QCOMPARE(m_fixture->document(appearance), first);
        QList<QByteArray> states;
        for (const CAppearanceUIElement& element : elementsOf(*appearance)) {
            checkDescription(element);
            editAndCheck(appearance, element, states);
            checkDescription(element);
        }
        QVERIFY(states.size() > 3 && states.last() == first);
        QCOMPARE(m_fixture->takeBackAll(), states);
    }

    void keysGoThroughThePanelInItsOrder()
    {
        const auto appearance = showWithPicture({});
        QStringList expected;
        for (const CAppearanceUIElement& element : elementsOf(*appearance)) {
            const auto* group = m_fixture->find<CGroupBoxCtrl>(element.GetAttribute("id"));
            if (!group || group->isCheckable())
                expected += QString::fromStdString(element.GetAttribute("id"));
        }
        QStringList visited;
        m_fixture->find<QWidget>("name")->setFocus();
        for (int i = 0; i < 30 && visited.count("name") < 2; ++i) {
            QWidget* at = QApplication::focusWidget();
            QTest::keyClick(at, Qt::Key_Tab);
            while (!expected.contains(at->objectName()))
                at = at->parentWidget();
            visited += at->objectName();
        }
        visited.erase(std::unique(visited.begin(), visited.end()), visited.end());
        QCOMPARE(visited, expected + QStringList("name"));
        QCOMPARE(m_fixture->takeEvents(), QString());
    }

    void nothingIsCutOff()
    {
        for (const char* type : {"Generic", "Glass", "Metal"}) {
            m_fixture->edit(m_fixture->add(type, type));
            for (const CAppearanceUIElement& element : elementsOf(*m_fixture->editor->GetAppearance())) {
                const auto* control = m_fixture->find<QWidget>(element.GetAttribute("id"));
                const QRect room = control->parentWidget()->rect();
                QVERIFY2(room.contains(control->geometry()), qPrintable(control->objectName()));
                QVERIFY2(control->height() >= control->minimumSizeHint().height(), qPrintable(control->objectName()));
            }
        }
    }

    void theSameAppearanceIsShownOnceAndNoneDisables()
    {
        const auto appearance = m_fixture->add("Generic", "shown");
        m_fixture->edit(appearance);
        const auto panels = [&] { return m_fixture->editor->findChildren<CDynamicWidget*>(); };
        const auto before = panels();
        QCOMPARE(before.size(), 1);
        m_fixture->editor->SetAppearance(appearance);
        QCOMPARE(panels(), before);
        m_fixture->editor->SetAppearance(nullptr);
        QCOMPARE(panels(), before);
        QVERIFY(before.first()->isVisible() && !m_fixture->editor->isEnabled());
        m_fixture->stepUp("roughness");
        QTest::mouseClick(m_fixture->find<CColorCtrl>("diffuse_color"), Qt::LeftButton);
        QCOMPARE(m_fixture->takeEvents(), QString());
        m_fixture->editor->SetAppearance(appearance);
        QVERIFY(m_fixture->editor->isEnabled());
    }

    void namesAreEditedOnlyWhenAllowed()
    {
        const auto controls = [&] {
            QStringList names;
            for (const CAppearanceUIElement& element : elementsOf(*m_fixture->editor->GetAppearance())) {
                if (m_fixture->find<QWidget>(element.GetAttribute("id")))
                    names += QString::fromStdString(element.GetAttribute("id"));
            }
            return names;
        };
        m_fixture->edit(m_fixture->add("Generic", "named"));
        const QStringList with = controls();
        GMaterialUI::CGlobalConfig::SetMaterialNameEditable(false);
        m_fixture = std::make_unique<EditorFixture>();
        m_fixture->edit(m_fixture->add("Generic", "unnamed"));
        QVERIFY(!m_fixture->editor->findChild<CLineEditCtrl*>());
        QCOMPARE(QStringList("name") + controls(), with);
    }

    // By the object: another one of its id has nothing to do with the edit.
    void recordsAreMadeInTheLibraryOfTheObject_data()
    {
        const auto row = testColumns<QString, QString, bool>("library", "libraryOfAnother", "isRecorded");
        row("project", "Customer Library", "Favorite Library", true);
        row("favourites", "Favorite Library", "Customer Library", true);
        row("system", "System Library", "", false);
        row("system, with another one in the project", "System Library", "Customer Library", false);
        row("replaced", "", "Customer Library", false);
    }

    void recordsAreMadeInTheLibraryOfTheObject()
    {
        QFETCH(QString, library);
        QFETCH(QString, libraryOfAnother);
        QFETCH(bool, isRecorded);
        const auto favorites = std::make_shared<kiv::CAppearanceLibrary>();
        favorites->SetName("Favorite Library");
        m_fixture->manager().AddUserAppearanceLibrary(favorites);
        const auto put = [&](const QString& in, const CAppearanceInstancePtr& appearance) {
            const auto user = m_fixture->manager().FindUserAppearanceLibrary(in.toStdString());
            if (const auto holder = in == "System Library" ? m_fixture->manager().GetSystemLibrary() : user)
                holder->AddInstance(appearance);
        };
        const auto appearance = m_fixture->makeAppearance("same id");
        appearance->SetName("edited");
        put(library, appearance);
        put(libraryOfAnother, m_fixture->makeAppearance("same id"));
        m_fixture->edit(appearance);
        m_fixture->stepUp("roughness");
        QCOMPARE(m_fixture->takeEvents(), QString("record roughness"));
        QVERIFY(appearance->ValueOr("roughness", 0.0F) > 0.5F);
        QCOMPARE(!m_fixture->records.back().empty(), isRecorded);
        QCOMPARE(m_fixture->records.back().find("edited") != kiv::String::npos, isRecorded);
    }

    // A type that leaves the property out, or has it as another type, as a host's own may.
    void whatCannotBeShownKeepsTheDefaultOfItsControl()
    {
        m_fixture->write("textures/a.png", makePicture(Qt::blue, "PNG"));
        for (const bool isWrong : {false, true}) {
            const auto appearance = m_fixture->add("Generic", "sparse");
            appearance->SetUseDiffuseTexture(true);
            for (const char* key : {"roughness", "diffuse_color", "enableBump", "name", "diffuse_texture"}) {
                QVERIFY(appearance->RemoveProperty(key));
                if (isWrong)
                    appearance->SetProperty(key, kiv::MakePropertyValue(kiv::CVec2<float>(1, 1)));
            }
            m_fixture->edit(appearance);
            QCOMPARE(m_fixture->takeEvents(), QString());
            QCOMPARE(m_fixture->find<CSpinBoxCtrl>("roughness")->value(), 0.0);
            QVERIFY(!m_fixture->find<CColorCtrl>("diffuse_color")->color().isValid());
            QVERIFY(m_fixture->find<CGroupBoxCtrl>("enableBump")->isChecked());
            QCOMPARE(m_fixture->find<CLineEditCtrl>("name")->text(), QString());
            QCOMPARE(m_fixture->find<CImageCtrl>("diffuse_texture")->GetImage(), QString());
            dropFile(m_fixture->find<CImageCtrl>("diffuse_texture")->GetThumbnail(), m_fixture->path("textures/a.png"));
            QCOMPARE(m_fixture->takeEvents(), QString("record diffuse_texture"));
            QVERIFY(!appearance->ValueOr<CAppearanceInstancePtr>("diffuse_texture", nullptr));
            m_fixture->stepUp("roughness");
            QCOMPARE(m_fixture->takeEvents(), QString("record roughness"));
            QCOMPARE(appearance->ValueOr("roughness", -1.0F), 0.01F);
        }
    }

    void rebuildingDoesNotGrow()
    {
        const CAppearanceInstancePtr shown[] = {m_fixture->add("Generic", "one"), m_fixture->add("Glass", "two")};
        const auto rebuild = [&](int times) {
            for (int i = 0; i < times; ++i) {
                m_fixture->editor->SetAppearance(shown[i % 2]);
                m_fixture->editor->Refresh();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            }
            return m_fixture->editor->findChildren<QObject*>().size();
        };
        m_fixture->edit(shown[0]);
        const int objects = rebuild(100);
        const std::size_t bytes = allocatedBytes();
        QCOMPARE(rebuild(900), objects);
        QVERIFY2(allocatedBytes() < bytes + 450'000, qPrintable(QString::number(allocatedBytes() - bytes)));
        QCOMPARE(m_fixture->takeEvents(), QString());
    }

    void rebuildingKeepsTheFocus()
    {
        showWithPicture({});
        const auto textures = [&] { return m_fixture->find<CImageCtrl>("diffuse_texture"); };
        const std::function<QWidget*()> widgets[] = {
            [&] { return m_fixture->find<CSpinBoxCtrl>("metallic"); }, [&] { return &textures()->GetThumbnail(); },
            [&] { return textures()->findChild<QToolButton*>(); }, [&] { return m_fixture->find<QLineEdit>("name"); }};
        for (const auto& widget : widgets) {
            widget()->setFocus();
            if (auto* line = qobject_cast<QLineEdit*>(widget()))
                line->setCursorPosition(3);
            m_fixture->editor->Refresh();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY(QApplication::focusWidget());
            QCOMPARE(QApplication::focusWidget(), widget());
        }
        QCOMPARE(m_fixture->find<QLineEdit>("name")->cursorPosition(), 3);
        QCOMPARE(m_fixture->takeEvents(), QString());
    }

    void whoSelectsSomethingElseMeanwhileDoesNotConfuseOthers()
    {
        const auto appearance = m_fixture->add("Generic", "edited");
        const auto other = m_fixture->add("Glass", "selected");
        m_fixture->edit(appearance);
        m_fixture->onEvent = [&](const QString& event) {
            if (event != "record")
                m_fixture->editor->SetAppearance(other);
        };
        CAppearanceInstancePtr heard;
        connect(m_fixture->editor.get(), &CAppearanceEditorWidget::OnAppearancePropertyChanged,
                [&](const CAppearanceInstancePtr& changed, const kiv::String&) { heard = changed; });
        m_fixture->stepUp("roughness");
        QCOMPARE(heard, appearance);
        QCOMPARE(m_fixture->editor->GetAppearance(), other);
    }

    void normalMapIsMadeOnce()
    {
        m_fixture->write("textures/a.b/wall.png", withWarning(makePicture(Qt::blue, "PNG")));
        expectWarning("CRC");
        const QString made = m_fixture->path("textures/a.b/wall_normal.jpg");
        const auto appearance = showWithPicture("a.b\\wall.png");
        EditorFixture::place(*appearance->GetDiffuseTexture());
        const QByteArray placed = m_fixture->document(appearance);
        s_cursor = Qt::ArrowCursor;
        const auto previous = qInstallMessageHandler(noteCursor);
        pressNormalMap();
        qInstallMessageHandler(previous);
        QCOMPARE(s_cursor, Qt::WaitCursor);
        QVERIFY(!QGuiApplication::overrideCursor());
        QCOMPARE(m_fixture->takeEvents(), QString("record bump_texture"));
        QCOMPARE(QString::fromStdString(appearance->GetBumpTexture()->GetTextureFile()), made);
        for (const char* key : {"rotation", "scale", "offset", "transform", "repeat_h", "repeat_v"}) {
            const auto value = appearance->GetBumpTexture()->FindProperty(key);
            QVERIFY2(value && value->Equals(*appearance->GetDiffuseTexture()->FindProperty(key)), key);
        }
        QCOMPARE(m_fixture->takeBackAll(), QList<QByteArray>{placed});
        QCOMPARE(QImage(made).size(), QSize(8, 8));
        m_fixture->write("textures/a.b/wall_normal.jpg", "made by hand");
        pressNormalMap();
        QCOMPARE(m_fixture->takeEvents(), QString("record bump_texture"));
        QCOMPARE(m_fixture->read("textures/a.b/wall_normal.jpg"), QByteArray("made by hand"));
    }

    // A name that leaves no room for "_normal" cannot be written by anybody, a superuser included.
    void normalMapThatCannotBeMadeChangesNothing_data()
    {
        const auto row = testColumns<QString, QByteArray, bool>("file", "content", "told");
        row("no such file", "gone.png", {}, false);
        row("no picture", "page.png", "<html>", false);
        row("no texture", "", {}, false);
        row("cannot be written", QString(248, 'n') + ".png", makePicture(Qt::blue, "PNG"), true);
    }

    void normalMapThatCannotBeMadeChangesNothing()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        if (!content.isEmpty())
            m_fixture->write("textures/" + file, content);
        const auto appearance = showWithPicture(file.toStdString());
        if (file.isEmpty())
            appearance->RemoveProperty("diffuse_texture");
        const QByteArray before = m_fixture->document(appearance);
        const auto files = m_fixture->tree("textures");
        QString said;
        ModalMeeting<QMessageBox> box([&](QMessageBox& message) {
            said = message.text();
            QTest::keyClick(&message, Qt::Key_Return);
        });
        pressNormalMap();
        QTEST(box.met, "told");
        QCOMPARE(said.contains("_normal.jpg"), box.met);
        QCOMPARE(m_fixture->takeEvents(), QString());
        QCOMPARE(m_fixture->document(appearance), before);
        QCOMPARE(m_fixture->tree("textures"), files);
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    // The host's reaction to a record may be to show something else, or to close.
    void anEditWhoseRecordChangesThePanelIsNotMade()
    {
        const auto appearance = m_fixture->add("Generic", "left");
        const auto other = m_fixture->add("Glass", "taken");
        const QByteArray before = m_fixture->document(appearance) + m_fixture->document(other);
        m_fixture->edit(appearance);
        m_fixture->onEvent = [&](const QString&) { m_fixture->editor->SetAppearance(other); };
        m_fixture->stepUp("roughness");
        QCOMPARE(m_fixture->takeEvents(), QString("record"));
        QCOMPARE(m_fixture->document(appearance) + m_fixture->document(other), before);

        for (const bool atRecord : {true, false}) {
            QPointer<CDynamicWidget> widget(new CDynamicWidget(m_fixture->manager(), m_fixture->library(), nullptr));
            widget->SetAppearance(appearance);
            const auto close = [&](const kiv::String&) { delete widget; };
            connect(widget, atRecord ? &CDynamicWidget::TransformEditedData : &CDynamicWidget::ChangeAppearance, close);
            widget->OnPropertyChanged("roughness", kiv::MakePropertyValue(0.25F));
            QVERIFY(!widget);
            QCOMPARE(appearance->ValueOr("roughness", 0.0F) == 0.25F, !atRecord);
        }
    }

    // Anything may happen to the panel while a person looks at a box.
    void thePanelMayGoWhileItAsks()
    {
        const QString file = QString(248, 'n') + ".png";
        const std::function<void()> asks[] = {
            [&] { QTest::mouseClick(m_fixture->find<CColorCtrl>("diffuse_color"), Qt::LeftButton); },
            [&] { QTest::mouseClick(buttons("diffuse_texture").first(), Qt::LeftButton); }, [&] { pressNormalMap(); }};
        for (int i = 0; i < 6; ++i) {
            m_fixture = std::make_unique<EditorFixture>();
            m_fixture->write("textures/" + file, makePicture(Qt::blue, "PNG"));
            const auto appearance = showWithPicture(file.toStdString());
            const QByteArray before = m_fixture->document(appearance);
            ModalMeeting<QDialog> meeting([&](QDialog& dialog) {
                const QPointer<QDialog> open(&dialog);
                if (i % 2)
                    m_fixture->editor.reset();
                else
                    m_fixture->editor->Refresh();
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                if (open)
                    open->done(QDialog::Accepted);
            });
            asks[i / 2]();
            QVERIFY(meeting.met);
            QCOMPARE(m_fixture->document(appearance), before);
            QCOMPARE(m_fixture->takeEvents(), QString());
        }
    }

protected:
    void finish() override { m_fixture.reset(); }

private:
    void checkDescription(const CAppearanceUIElement& element)
    {
        const auto text = [&](const char* attribute) {
            return QString::fromStdString(m_fixture->manager().LocalizeUiString(element.GetAttribute(attribute)));
        };
        const auto* control = m_fixture->find<QWidget>(element.GetAttribute("id"));
        QVERIFY2(control, element.GetAttribute("id").c_str());
        QCOMPARE(seenTip(*control), text("tooltip"));
        if (const auto* group = qobject_cast<const CGroupBoxCtrl*>(control)) {
            QCOMPARE(group->title(), text("label"));
            return;
        }
        if (const auto* number = qobject_cast<const CSpinBoxCtrl*>(control))
            QCOMPARE(number->suffix(), element.HasAttribute("unit") ? " " + text("unit") : QString());
        for (const QLabel* label : m_fixture->editor->findChildren<QLabel*>()) {
            if (label->buddy() != control)
                continue;
            QCOMPARE(label->text().replace("&&", "&"), text("label"));
            QCOMPARE(label->textFormat(), Qt::PlainText);
            return;
        }
        QFAIL("no label");
    }

    /// Edits as a person does, a switch until it is on; adds the documents before each edit at the front.
    void editAndCheck(const CAppearanceInstancePtr& appearance, const CAppearanceUIElement& element,
                      QList<QByteArray>& states)
    {
        const kiv::String key = element.GetAttribute("id");
        auto* control = m_fixture->find<QWidget>(key);
        const auto* group = qobject_cast<CGroupBoxCtrl*>(control);
        if (group && !group->isCheckable())
            return;
        do {
            states.push_front(m_fixture->document(appearance));
            work(*control);
            QCOMPARE(m_fixture->takeEvents(), "record " + QString::fromStdString(key));
            const QStringList also = key == "transparent" ? QStringList("diffuse_color") : QStringList();
            QCOMPARE(changedKeys(states.front(), m_fixture->document(appearance)),
                     also + QStringList(control->objectName()));
            QVERIFY(dynamic_cast<kiv::CDynamicProperty&>(*control).GetValue()->Equals(*storedValue(*appearance, key)));
        } while (group && !group->isChecked());
    }

    static kiv::CPropertyValuePtr storedValue(const kiv::CAppearanceInstance& appearance, const kiv::String& key)
    {
        const auto texture = appearance.ValueOr<CAppearanceInstancePtr>(key, nullptr);
        return texture ? texture->FindProperty("texture_file") : appearance.FindProperty(key);
    }

    void work(QWidget& control)
    {
        if (auto* number = qobject_cast<CSpinBoxCtrl*>(&control)) {
            QTest::keyClick(number, number->value() < number->maximum() ? Qt::Key_Up : Qt::Key_Down);
        } else if (auto* color = qobject_cast<CColorCtrl*>(&control)) {
            chooseColor(*color, QColor(12, 34, 56));
        } else if (auto* image = qobject_cast<CImageCtrl*>(&control)) {
            QVERIFY(image->isEnabled());
            m_fixture->write("textures/new.png", makePicture(Qt::blue, "PNG"));
            dropFile(image->GetThumbnail(), m_fixture->path("textures/new.png"));
        } else {
            QTest::keyClick(&control, Qt::Key_Space);
        }
    }

    CAppearanceInstancePtr showWithPicture(const kiv::String& file)
    {
        const auto appearance = m_fixture->add("Generic", "pictured");
        appearance->SetUseDiffuseTexture(true);
        appearance->SetUseBumpTexture(true);
        appearance->GetDiffuseTexture()->SetTextureFile(file);
        m_fixture->edit(appearance);
        return appearance;
    }

    /// To choose a file, and to make a normal map.
    QList<QToolButton*> buttons(const kiv::String& key) const
    {
        return m_fixture->find<CImageCtrl>(key)->findChildren<QToolButton*>();
    }

    void pressNormalMap() const
    {
        const QPointer<QToolButton> button(buttons("bump_texture").last());
        QTest::mousePress(button, Qt::LeftButton);
        if (button)
            QTest::mouseRelease(button, Qt::LeftButton);
    }

    std::unique_ptr<EditorFixture> m_fixture;
};

MATERIAL_TEST_MAIN(TestDynamicEditor)
#include "TestDynamicEditor.moc"
