#include "ModelFixture.h"

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceLibraryParser.h>
#include <kiv/AppearancePreviewer.h>

#include <QDir>

#include <cmath>

using namespace kiv;

namespace {

class PreviewRecorder : public CAppearancePreviewer {
public:
    QString shown;

    void Preview(const CVec4<float>& c) override { shown = QString("%1 %2 %3 %4").arg(c.x).arg(c.y).arg(c.z).arg(c.w); }
    void Preview(const String& imageFile) override { shown = QString::fromStdString(imageFile); }
};

}  // namespace

class TestLibraries : public MaterialTest {
    Q_OBJECT

private:
    ModelFixture m_model;

private slots:
    void aLibraryFileIsReadAsFarAsItIsSound()
    {
        const auto library = std::make_shared<CAppearanceLibrary>();
        CAppearanceLibraryParser parser(m_model.manager);
        const auto path = m_model.write("lib/metals.json", R"({"name":"Metals","other":[1],"appearances":[
            {"template":"Metal","id":"b","name":"Brass"},
            {"template":"Metal","id":"c","diffuse_color":[1,2]},
            {"template":"Metal","id":"a"},
            {"template":"Metal","id":"b","name":"Bronze"},
            {"template":"Metal"}, 7]})");
        QVERIFY(parser.AppearanceLibraryFromFile(library, path));
        QCOMPARE(library->GetName(), String("Metals"));
        QCOMPARE(library->count(), std::size_t(2));
        QCOMPARE(library->begin()->first, String("a"));
        QCOMPARE(library->FindInstance("b")->GetName(), String("Brass"));
        QStringList places;
        for (const CParseError& error : parser.GetReport())
            places += error.place.c_str();
        QCOMPARE(places, QStringList({"metals.json/appearances/1/diffuse_color", "metals.json/appearances/3/id",
                                      "metals.json/appearances/4/id", "metals.json/appearances/5"}));
    }

    void aBrokenLibraryFileAddsNothing()
    {
        for (const QByteArray& text :
             {QByteArray(), QByteArray("{\"appearances\":[{\"template\":\"Metal\",\"id\":\"a\"},{"),
              QByteArray(R"({"appearances":{}})"), QByteArray("[]"), QByteArray(100000, '[')}) {
            const auto library = std::make_shared<CAppearanceLibrary>();
            CAppearanceLibraryParser parser(m_model.manager);
            QVERIFY(!parser.AppearanceLibraryFromFile(library, m_model.write("broken.json", text)));
            QVERIFY(!parser.AppearanceLibraryFromString(library, text.toStdString(), "memory"));
            QVERIFY(!parser.AppearanceLibraryFromFile(library, m_model.path("missing.json").toStdWString()));
            QVERIFY(!parser.AppearanceLibraryFromString({}, "{}", "memory"));
            QCOMPARE(library->count(), std::size_t(0));
            QCOMPARE(parser.GetReport().size(), std::size_t(3));
            QCOMPARE(parser.GetReport()[0].place, String("broken.json"));
        }
    }

    void theConfigurationIsRead()
    {
        CAppearanceLibraryParser parser(m_model.manager);
        m_model.write("library.json", R"({"textureUnit":"mm"})");
        QVERIFY(parser.ConfigLibrayFromFile(m_model.path("").toStdWString()));
        QCOMPARE(m_model.manager.GetTextureUnit(), String("mm"));
        const auto other = m_model.write("other.json", R"({"textureUnit":1})");
        QVERIFY(!parser.ConfigLibrayFromFile(other));
        QVERIFY(!parser.ConfigLibrayFromFile(m_model.path("missing.json").toStdWString()));
        QCOMPARE(m_model.manager.GetTextureUnit(), String("mm"));
        QCOMPARE(parser.GetReport().size(), std::size_t(2));
    }

    void librariesAreKeptByName()
    {
        CAppearanceLibraryManager manager;
        const auto add = [&](const char* name) {
            const auto library = std::make_shared<CAppearanceLibrary>();
            library->SetName(name);
            return manager.AddUserAppearanceLibrary(library);
        };
        QVERIFY(add("Zebra") && add("Customer Library"));
        QVERIFY(!add("Zebra") && !add("System Library") && !add("") && !manager.AddUserAppearanceLibrary({}));
        QStringList names;
        for (auto it = manager.beginLibrary(); it != manager.endLibrary(); ++it)
            names += it->first.c_str();
        QCOMPARE(names, QStringList({"Customer Library", "System Library", "Zebra"}));
        QVERIFY(!manager.FindUserAppearanceLibrary("System Library"));
        QVERIFY(!manager.DeleteUserAppearanceLibrary("System Library") && manager.GetSystemLibrary());
        QVERIFY(manager.DeleteUserAppearanceLibrary("Zebra") && !manager.DeleteUserAppearanceLibrary("Zebra"));
    }

    void appearancesAreKeptByIdentifier()
    {
        CAppearanceLibrary library;
        const auto metal = m_model.make("Metal");
        QVERIFY(library.AddInstance(metal));
        QVERIFY(!library.AddInstance(metal) && !library.AddInstance({}));
        QVERIFY(!library.AddInstance(metal->Clone("")));
        QVERIFY(library.AddInstance(metal->Clone("a")));
        QCOMPARE(library.begin()->first, String("a"));
        QVERIFY(library.DeleteInstance("a") && !library.DeleteInstance("a") && !library.FindInstance("a"));
    }

    void textsAreShownInTheLanguage()
    {
        auto& manager = m_model.manager;
        CParseError error;
        const auto load = [&](const char* name, const QByteArray& text) {
            return manager.LoadTexts(m_model.write(name, text), error);
        };
        const QByteArray chinese =
            R"({"language":"zh","appearance":{"Brick":"砖"},"ui":{"Brick":"砖块","Name:":"名称："}})";
        const QByteArray more = R"({"language":"zh","appearance":{"Wood":"木"}})";
        const QByteArray english = R"({"language":"en","ui":{"Name:":"Name"}})";
        QVERIFY(load("zh.json", chinese) && load("more.json", more) && load("en.json", english));
        QCOMPARE(manager.LocalizeAppearanceString("Brick"), String("砖"));
        QCOMPARE(manager.LocalizeAppearanceString("Wood"), String("木"));
        QCOMPARE(manager.LocalizeUiString("Brick"), String("砖块"));
        QCOMPARE(manager.LocalizeAppearanceString("Name:"), String("Name:"));
        QCOMPARE(manager.LocalizeAppearanceString("\xff"), String("\xff"));
        manager.SetLanguage("en");
        QCOMPARE(manager.LocalizeUiString("Name:"), String("Name"));
        QCOMPARE(manager.LocalizeAppearanceString("Brick"), String("Brick"));
        manager.SetLanguage("zh");
    }

    void badTextFilesChangeNothing()
    {
        const std::pair<const char*, const char*> cases[] = {
            {"{", "x.json"},
            {R"({"ui":{"New":"x"}})", "x.json/language"},
            {R"({"language":"zh","ui":[]})", "x.json/ui"},
            {R"({"language":"zh","appearance":{"New":"x"},"ui":{"New":1}})", "x.json/ui/New"}};
        for (const auto& [text, place] : cases) {
            CParseError error;
            QVERIFY2(!m_model.manager.LoadTexts(m_model.write("x.json", text), error), text);
            QCOMPARE(error.place, String(place));
            QCOMPARE(m_model.manager.LocalizeAppearanceString("New"), String("New"));
        }
    }

    void texturesAreFound_data()
    {
        const auto row = testColumns<QString, QString>("stored", "found");
        row("slash", "wood/oak.png", "textures/wood/oak.png");
        row("backslash", "wood\\oak.png", "textures/wood/oak.png");
        row("in the first folder that has it", "both.png", "textures/both.png");
        row("favourite texture", "mine.png", "favTextures/mine.png");
        row("favourite library", "UserLib Textures\\0a", "fav/UserLib Textures/0a");
        row("nowhere", "none\\x.png", "textures/none/x.png");
        row("a folder", "wood", "textures/wood");
        row("empty", "", "");
        row("climbs", "..\\secret.png", "");
        row("climbs inside", "wood/../../secret.png", "");
        row("only dots in the name", "wood/..oak..png", "textures/wood/..oak..png");
    }

    void texturesAreFound()
    {
        QFETCH(QString, stored);
        QFETCH(QString, found);  // below the fixture's folder
        for (const char* name : {"textures/wood/oak.png", "textures/both.png", "favTextures/both.png", "secret.png",
                                 "favTextures/mine.png", "fav/UserLib Textures/0a"})
            m_model.write(name, "x");
        auto& manager = m_model.manager;
        manager.SetTextureLibraryPath(m_model.path("textures").toStdWString() + L"\\");
        manager.SetFavoriteLibraryTexturePath(m_model.path("favTextures").toStdWString());
        manager.SetFavoriteLibraryPath(m_model.path("fav").toStdWString());
        const QString expected = found.isEmpty() ? QString() : QDir::toNativeSeparators(m_model.path(found));
        QCOMPARE(QString::fromStdWString(manager.ResolvePath(stored.toStdWString())), expected);
        QCOMPARE(QString::fromStdString(manager.ResolvePath(stored.toStdString())), expected);
        const std::wstring absolute = m_model.path("secret.png").toStdWString();
        QCOMPARE(manager.ResolvePath(absolute), absolute);
        QCOMPARE(CAppearanceLibraryManager().ResolvePath(std::wstring(L"x.png")), std::wstring());
    }

    void thePreviewIsTheTextureInUseOrTheColour()
    {
        auto& manager = m_model.manager;
        manager.SetTextureLibraryPath(m_model.path("textures").toStdWString());
        const QString picture = m_model.path("textures/a.png");
        PreviewRecorder recorder;
        QVERIFY(!manager.Preview({}, recorder));
        const auto appearance = m_model.make("Generic");
        appearance->SetDiffuse({2, -1, NAN, 0.5f});
        appearance->GetDiffuseTexture()->SetTextureFile("a.png");
        QVERIFY(manager.Preview(appearance, recorder));
        QCOMPARE(recorder.shown, QString("1 0 0 0.5"));
        appearance->SetUseDiffuseTexture(true);
        QVERIFY(manager.Preview(appearance, recorder));
        QCOMPARE(recorder.shown, picture);
        appearance->GetDiffuseTexture()->SetTextureFile("..\\a.png");
        QVERIFY(manager.Preview(appearance, recorder));
        QCOMPARE(recorder.shown, QString("1 0 0 0.5"));
    }
};

MATERIAL_TEST_MAIN(TestLibraries)
#include "TestLibraries.moc"
