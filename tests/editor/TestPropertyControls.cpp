#include "EditorFixture.h"

#include <ColorCtrl.h>
#include <GroupBoxCtrl.h>
#include <ImageCtrl.h>
#include <ImagePreviewerCtrl.h>
#include <LineEditCtrl.h>
#include <SpinBoxCtrl.h>

#include <MaterialTest.h>
#include <ModalMeeting.h>

#include <QFileDialog>
#include <QLabel>
#include <QRandomGenerator>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

#include <cmath>
#include <limits>

using kiv::MakePropertyValue;
using Color = kiv::CVec4<float>;

namespace {

/// What a control announced since the last take().
template <typename T>
class Announced {
public:
    template <typename Control>
    explicit Announced(Control& control)
    {
        QObject::connect(&control, &Control::ChangeProperty,
                         [this](const kiv::String& key, const kiv::CPropertyValuePtr& value) {
                             m_keys += QString::fromStdString(key);
                             values.push_back(value->Get<T>());
                         });
    }
    QString take() { return std::exchange(m_keys, {}).join(' '); }

    std::vector<T> values;

private:
    QStringList m_keys;
};

// As from the window system: only then does a wheel that a widget leaves alone go on to what it lies in.
void turnWheel(QWidget& target)
{
    const QPoint centre = target.rect().center();
    QWheelEvent event(centre, target.mapToGlobal(centre), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(&target, &event);
}

bool sameBits(float a, float b)
{
    return a == b && std::signbit(a) == std::signbit(b);
}

/// How a control takes values and announces changes. `announces`: whether showing another value is announced.
template <typename Control, typename T, typename Wrong>
void checkControl(const T& first, const Wrong& wrong, bool announces, const std::function<void(Control&)>& edit,
                  const T& edited)
{
    Control control(QStringLiteral("property"), nullptr);
    if constexpr (std::is_same_v<Control, CGroupBoxCtrl>)
        control.setCheckable(true);
    Announced<T> announced(control);
    control.SetValue(nullptr);
    QCOMPARE(announced.take(), QString());

    kiv::CDynamicProperty& property = control;
    property.SetValue(MakePropertyValue(first));
    QVERIFY(property.GetValue()->template Get<T>() == first);
    QCOMPARE(announced.take(), QString(announces ? "property" : ""));
    property.SetValue(MakePropertyValue(first));
    property.SetValue(nullptr);
    QVERIFY_EXCEPTION_THROWN(property.SetValue(MakePropertyValue(wrong)), boost::bad_any_cast);
    QVERIFY(property.GetValue()->template Get<T>() == first);
    QCOMPARE(announced.take(), QString());

    control.setObjectName(QStringLiteral("renamed"));
    edit(control);
    QCOMPARE(announced.take(), QString("renamed"));
    QVERIFY(announced.values.back() == edited);
    QVERIFY(property.GetValue()->template Get<T>() == edited);
}

}  // namespace

/// The controls of one property each: what they show, what they answer, and what they announce.
class TestPropertyControls : public MaterialTest {
    Q_OBJECT

private slots:
    void announceEachChange()
    {
        m_fixture.write("textures/new.png", makePicture(Qt::blue, "PNG"));
        const QString file = m_fixture.path("textures/new.png");
        checkControl<CSpinBoxCtrl, float>(
            4, true, true, [](CSpinBoxCtrl& control) { QTest::keyClick(&control, Qt::Key_Up); }, 5);
        checkControl<CColorCtrl, Color>({1, 0, 0, 0.25F}, 1.0F, true,
                                        [](CColorCtrl& control) { chooseColor(control, Qt::green); }, {0, 1, 0, 0.25F});
        checkControl<CLineEditCtrl, std::string>(
            u8"红木", 1, true, [](CLineEditCtrl& control) { QTest::keyClick(&control, Qt::Key_X); }, u8"红木x");
        checkControl<CImageCtrl, std::string>(
            u8"图/old.png", 1, false, [&](CImageCtrl& control) { dropFile(control.GetThumbnail(), file); },
            file.toStdString());
        checkControl<CGroupBoxCtrl, bool>(
            false, 0.0F, false, [](CGroupBoxCtrl& control) { QTest::keyClick(&control, Qt::Key_Space); }, true);
    }

    void spinBoxScales_data()
    {
        const auto row =
            testColumns<QString, float, QString, QString, float>("range", "stored", "shown", "typed", "answered");
        row("percent", "0~1", 0.5F, "50", "75", 0.75F);
        row("lower bound", "-1~1", -1, "-1", "99", 1);
        row("middle", "-1~1", 0, "49", "-1", -1);
        row("upper bound", "-1~1", 1, "99", "49", 0);
        row("above its range", "0~1", 7, "100", "12.5", 0.125F);
        row("below its range", "0~1", -7, "0", "100", 1);
        row("fraction", "0~1", 0.123456F, "12.346", "0.002", 0.00002F);
        row("without a range", "", 1.5F, "1.5", "2.25", 2.25F);
        row("negative without a range", "", -2.125F, "-2.125", "-4", -4);
        row("large without a range", "", 123456, "123456", "1000000", 1000000);
    }

    void spinBoxScales()
    {
        QFETCH(float, stored);
        QFETCH(float, answered);
        QFETCH(QString, typed);
        CSpinBoxCtrl control("number", nullptr);
        control.setLocale(QLocale::c());
        QFETCH(QString, range);
        if (!range.isEmpty())
            control.SetPropertyRange(range.section('~', 0, 0).toDouble(), range.section('~', 1).toDouble());
        Announced<float> announced(control);
        control.SetTypedValue(stored);
        QTEST(control.text(), "shown");
        QVERIFY(sameBits(control.GetTypedValue(), stored));
        for (const float noNumber : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()})
            control.SetTypedValue(noNumber);
        QVERIFY(sameBits(control.GetTypedValue(), stored));
        typeAnew(control, typed);
        QCOMPARE(control.text(), typed);
        QCOMPARE(control.GetTypedValue(), answered);
        QCOMPARE(announced.values.back(), answered);
        announced.take();
        QTest::keyClick(&control, Qt::Key_Return);
        QCOMPARE(announced.take(), QString());
    }

    void spinBoxKeepsWhatIsBeyondItsRangeUntilChanged()
    {
        CSpinBoxCtrl control("number", nullptr);
        control.SetPropertyRange(0, 1);
        for (const auto& [stored, outwards, inwards, bound] :
             {std::tuple(7.0F, Qt::Key_Up, Qt::Key_Down, 1.0F), {-7.0F, Qt::Key_Down, Qt::Key_Up, 0.0F}}) {
            control.SetTypedValue(stored);
            QTest::keyClick(&control, outwards);
            QCOMPARE(control.GetTypedValue(), stored);
            QTest::keyClick(&control, inwards);
            QTest::keyClick(&control, outwards);
            QCOMPARE(control.GetTypedValue(), bound);
        }
    }

    // Looking at a number must not change it, nor may a step there and back.
    void spinBoxKeepsEveryFloat()
    {
        QRandomGenerator random(4);
        for (const auto& [low, high] : {std::pair(0.0, 1.0), {-1.0, 1.0}, {1.0, 3.0}, {0.0, 0.1}, {-300.0, 7.5}}) {
            CSpinBoxCtrl control("number", nullptr);
            control.SetPropertyRange(low, high);
            Announced<float> announced(control);
            for (int i = 0; i < 4000; ++i) {
                const auto stored = float(low + (high - low) * random.generateDouble());
                control.SetTypedValue(stored);
                if (i % 20 == 0 && control.value() > low + 1 && control.value() < low + 99) {
                    QTest::keyClick(&control, Qt::Key_Up);
                    QVERIFY(!sameBits(control.GetTypedValue(), stored));
                    QTest::keyClick(&control, Qt::Key_Down);
                }
                QVERIFY2(sameBits(control.GetTypedValue(), stored),
                         qPrintable(QString::number(double(stored), 'g', 9)));
                QVERIFY(announced.values.empty() || sameBits(announced.values.back(), stored));
            }
        }
    }

    void wheelScrollsThePanelOverANumber()
    {
        QScrollArea area;
        auto* page = new QWidget;
        page->setFixedSize(200, 2000);
        area.setWidget(page);
        area.resize(220, 200);
        auto* number = new CSpinBoxCtrl("number", page);
        number->move(10, 150);
        auto* other = new QToolButton(page);
        number->SetTypedValue(50);
        Announced<float> announced(*number);
        area.show();
        QVERIFY(QTest::qWaitForWindowActive(&area));
        for (QWidget* focused : {static_cast<QWidget*>(other), static_cast<QWidget*>(number)}) {
            focused->setFocus();
            area.verticalScrollBar()->setValue(0);
            turnWheel(*number);
            QVERIFY(area.verticalScrollBar()->value() > 0);
            QVERIFY(focused->hasFocus());
        }
        QCOMPARE(announced.take(), QString());
        QCOMPARE(number->GetTypedValue(), 50.0F);
    }

    void colorsAreShownInSteps_data()
    {
        constexpr float none = std::numeric_limits<float>::quiet_NaN();
        const auto row = testColumns<QVector<float>, QString, QVector<float>>("stored", "text", "answered");
        row("truncated", {0.999F, 0.5F, 0, 0.3F}, "RGB(254,127,0)", {float(254 / 255.0), float(127 / 255.0), 0, 0.3F});
        row("outside", {-1, 2, 1, -3}, "RGB(0,255,255)", {0, 1, 1, -3});
        row("no number", {none, 1, 0, 1}, "RGB(0,255,0)", {0, 1, 0, 1});
    }

    void colorsAreShownInSteps()
    {
        QFETCH(QVector<float>, stored);
        QFETCH(QVector<float>, answered);
        CColorCtrl control("color", nullptr);
        control.SetTypedValue({stored[0], stored[1], stored[2], stored[3]});
        QTEST(control.text(), "text");
        QVERIFY(control.GetTypedValue() == Color(answered[0], answered[1], answered[2], answered[3]));
        chooseColor(control, QColor(1, 2, 3));
        QCOMPARE(control.text(), QString("RGB(1,2,3)"));
        QVERIFY(control.GetTypedValue() == Color(1 / 255.0F, 2 / 255.0F, 3 / 255.0F, answered[3]));
    }

    void imageNames_data()
    {
        const auto row = testColumns<QString, QString>("path", "name");
        row("file in a folder", "/some/dir/a.png", "a.png");
        row("stored path", "dir\\a.png", "a.png");
        row("slash before backslash", "d\\x/y\\z.png", "y\\z.png");
        row("no separator", u8"木.png", u8"木.png");
        row("slash first", "/a.png", "/a.png");
        row("backslash first", "\\a.png", "\\a.png");
        row("what looks like rich text", "/x<b>/<i>a</i>.png", "i>.png");
        row("nothing", "", "");
    }

    void imageNames()
    {
        QFETCH(QString, path);
        CImageCtrl control("image", nullptr);
        control.SetTypedValue("before.png");
        control.SetTypedValue(path.toStdString());
        const auto* label = control.findChild<QLabel*>();
        QTEST(label->text(), "name");
        QVERIFY(!label->wordWrap());
        for (const QWidget* widget :
             {static_cast<const QWidget*>(label), static_cast<const QWidget*>(&control.GetThumbnail())})
            QCOMPARE(seenTip(*widget), path);
        QCOMPARE(control.GetTypedValue(), path.toStdString());
    }

    void thumbnailAsksForThePlacementOrForAPicture()
    {
        m_fixture.write("textures/a.png", makePicture(Qt::blue, "PNG"));
        const QString file = m_fixture.path("textures/a.png");
        CImageCtrl control("image", nullptr);
        Announced<std::string> announced(control);
        QStringList placed;
        connect(&control, &CImageCtrl::ShowTextureEditor, [&](const QString& key) { placed += key; });
        for (QWidget* pressed : {static_cast<QWidget*>(&control.GetThumbnail()),
                                 static_cast<QWidget*>(control.findChild<QToolButton*>())}) {
            ModalMeeting<QFileDialog> meeting([&](QFileDialog& dialog) {
                dialog.selectFile(file);
                QTest::keyClick(&dialog, Qt::Key_Return);
            });
            QTest::mouseClick(pressed, Qt::LeftButton);
            QVERIFY(meeting.met);
            QCOMPARE(announced.take(), QString("image"));
            QCOMPARE(announced.values.back(), file.toStdString());
        }
        QCOMPARE(control.findChild<QLabel*>()->text(), QString("a.png"));
        QCOMPARE(placed, QStringList());
        QTest::mouseClick(&control.GetThumbnail(), Qt::LeftButton);
        QTest::keyClick(&control.GetThumbnail(), Qt::Key_Space);
        QCOMPARE(placed, QStringList({"image", "image"}));
    }

private:
    LibraryFixture m_fixture;
};

MATERIAL_TEST_MAIN(TestPropertyControls)
#include "TestPropertyControls.moc"
