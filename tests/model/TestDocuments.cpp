#include "ModelFixture.h"

#include <QTextCodec>

#include <cmath>
#include <limits>

using namespace kiv;

namespace {

/// An appearance without template that holds only what a test puts in.
CAppearanceInstancePtr bare(const String& key, const CPropertyValuePtr& value)
{
    auto appearance = std::make_shared<CAppearanceInstance>();
    appearance->SetProperty("template", MakePropertyValue(String("Texture")));
    appearance->SetProperty(key, value);
    return appearance;
}

CMatrix3<float> matrix()
{
    CMatrix3<float> result;
    for (std::size_t i = 0; i < 9; ++i)
        result.m[i] = float(i) / 7;
    return result;
}

}  // namespace

class TestDocuments : public MaterialTest {
    Q_OBJECT

private:
    CParseError refusal(const String& document)
    {
        CAppearanceParser parser(m_model.manager);
        const bool isRead = parser.AppearanceFromString(document) != nullptr;
        return isRead ? CParseError{"", "was read"} : parser.GetLastError();
    }

    ModelFixture m_model;

private slots:
    void everyTypeComesBack_data()
    {
        const auto add = testColumns<CPropertyValuePtr>("value");
        const auto row = [&](const char* name, auto value) { add(name, MakePropertyValue(value)); };
        row("true", true);
        row("int", std::numeric_limits<int>::min());
        row("whole float", 16777216.0f);
        row("long float", 0.1f + 0.2f);
        row("smallest float", std::numeric_limits<float>::denorm_min());
        row("largest float", std::numeric_limits<float>::max());
        row("minus zero", -0.0f);
        row("float that rounds twice", 7.038531e-26f);
        row("vec2", CVec2<float>(0.1f, -3));
        row("vec3", CVec3<float>(1e-20f, 1e20f, 7));
        row("vec4", CVec4<float>(1, 2, 3, 4.5f));
        row("matrix", matrix());
        row("empty text", String());
        row("Chinese text", String("砖墙 – \"rot\" \\ / \x7f\t\n\x01"));
        row("text with a null character", String("a\0b", 3));
        row("raw null", CRawJson{"null"});
        row("raw number", CRawJson{"0.1234567890123"});
        row("raw long number", CRawJson{"4294967296"});
        row("raw list", CRawJson{R"([1,2,"x",[],{},{"a":{"b":1.0}}])"});
    }

    void everyTypeComesBack()
    {
        QFETCH(CPropertyValuePtr, value);
        const auto written = bare("zzz", value);
        const String text = m_model.text(written);
        const auto back = m_model.read(text)->FindProperty("zzz");
        QVERIFY(back && back->Equals(*value));
        const String again = m_model.text(m_model.read(text));
        QCOMPARE(m_model.text(m_model.read(again)), again);
        if (const float* number = value->TryGet<float>())
            QCOMPARE(std::signbit(back->Get<float>()), std::signbit(*number));
    }

    void subAppearancesComeBack()
    {
        const auto inner = m_model.make("Metal");
        inner->GetDiffuseTexture()->SetTextureFile("a\\b.png");
        const auto outer = m_model.make("Generic");
        outer->SetProperty("layer", MakePropertyValue(inner));
        const auto back = m_model.read(m_model.text(outer));
        QVERIFY(AreEqual(*outer, *back));
        QCOMPARE(back->FindProperty("layer")->Get<CAppearanceInstancePtr>()->GetDiffuseTexture()->GetTextureFile(),
                 String("a\\b.png"));
    }

    /// The digest of this text tells favourites apart: it may never change.
    void textIsSettled()
    {
        const auto appearance = m_model.read(
            R"({ "name":"\u7816", "zeta":[1.0, 0.10], "template":"Metal", "id":"7", "metallic":1, "alpha":{"b":1,"a":null} })");
        const char* const expected =
            "{'alpha':{'a':null,'b':1},'category':'Metal','count':0.25,'diffuse_color':[0.8,0.8,0.8,1.0],"
            "'diffuse_texture':{'environment_mode':'MODULATE','id':'','rotation':0.0,'scale':[1.0,1.0],"
            "'template':'Texture','texture_file':'','transform':[1.0,0.0,0.0,0.0,1.0,0.0,0.0,0.0,1.0]},"
            "'edit_type':0,'id':'7','metallic':1.0,'name':'砖','roughness':0.2,'tags':'','template':'Metal',"
            "'zeta':[1.0,0.1]}";
        QCOMPARE(QString::fromStdString(m_model.text(appearance)).replace('"', '\''), QString(expected));
        QCOMPARE(m_model.text(m_model.read("\xEF\xBB\xBF" + m_model.text(appearance))), m_model.text(appearance));
    }

    void whatNoDocumentHoldsIsNull()
    {
        const String null = R"("a":null)";
        for (const auto& value :
             {MakePropertyValue(std::numeric_limits<float>::infinity()), MakePropertyValue(CVec2<float>(1, NAN)),
              MakePropertyValue(1.5), MakePropertyValue(CAppearanceInstancePtr()), std::make_shared<CPropertyValue>()})
            QVERIFY(m_model.text(bare("a", value)).find(null) != String::npos);
        const auto broken = bare("a", MakePropertyValue(String("x\xff\xfe")));
        const auto repaired = bare("a", MakePropertyValue(String("x\uFFFD\uFFFD")));
        QCOMPARE(m_model.text(broken), m_model.text(repaired));
        QCOMPARE(m_model.text({}), String());
    }

    void declaredValuesAreConvertedAndDefaulted()
    {
        const auto appearance =
            m_model.read(R"({"template":"Generic","roughness":1,"light":null,"diffuse_texture":null})");
        QCOMPARE(appearance->ValueOr("roughness", 0.0f), 1.0f);
        QCOMPARE(appearance->ValueOr("light", CVec3<float>()).z, 30.0f);
        QCOMPARE(appearance->ValueOr("count", 0), 3);
        QCOMPARE(appearance->GetDiffuseTexture()->GetId(), String("textureUnit0"));
        QCOMPARE(appearance->GetDiffuseTexture()->ValueOr("rotation", 0.0f), 45.0f);
        QVERIFY(appearance->GetDiffuseTexture() != m_model.make("Generic")->GetDiffuseTexture());
    }

    void anUnknownTemplateHasTheGenericParameters()
    {
        const auto appearance = m_model.read(R"({"template":"Velvet","roughness":1})");
        QCOMPARE(appearance->GetTemplateName(), String("Velvet"));
        QVERIFY(!appearance->GetTemplate());
        QCOMPARE(appearance->ValueOr("roughness", 0.0f), 1.0f);
        QVERIFY(appearance->GetBumpTexture());
        const String wrongType = R"({"template":"Velvet","roughness":"rough"})";
        QCOMPARE(refusal(wrongType).place, String("/roughness"));
    }

    void withoutGenericOnlyWellKnownKeysAreChecked()
    {
        CAppearanceLibraryManager manager;
        CAppearanceParser parser(manager);
        const auto appearance = parser.AppearanceFromString(R"({"template":"X","id":"i","roughness":1,"tags":null})");
        QVERIFY(appearance);
        QCOMPARE(appearance->size(), std::size_t(3));
        QCOMPARE(appearance->ValueOr("roughness", 0), 1);
        for (const char* refused : {R"({"template":"X","id":7})", R"({"template":"X","edit_type":1.5})",
                                    R"({"template":"X","t":{"template":"Texture","texture_file":1}})"})
            QVERIFY2(!parser.AppearanceFromString(refused), refused);
    }

    void badDocumentsAreRefused_data()
    {
        const auto add = testColumns<String, String, String>("document", "place", "reason");
        const auto row = [&](const String& document, const char* place, const char* reason) {
            add(document.c_str(), document, place, reason);
        };
        const auto generic = [&](const String& key, const String& value, const char* place, const char* reason) {
            row("{\"template\":\"Generic\",\"" + key + "\":" + value + "}", place, reason);
        };
        row("", "", "no valid JSON");
        row("{", "", "no valid JSON");
        row(R"({"template":"Generic"} x)", "", "no valid JSON");
        row("[]", "", "is an object");
        row("{}", "/template", "missing");
        row(R"({"template":7})", "/template", "no text");
        row(R"({"template":"Generic","template":"Metal"})", "/template", "twice");
        generic("roughness", "\"0.5\"", "/roughness", "expected a number, found a text");
        generic("roughness", "1e39", "/roughness", "too large");
        generic("roughness", "1e400", "", "no valid JSON");
        generic("roughness", "true", "/roughness", "expected a number");
        generic("count", "3.0", "/count", "expected a whole number, found a number with a fraction");
        generic("count", "2147483648", "/count", "too large");
        generic("count", "18446744073709551615", "/count", "too large");
        generic("useBaseTexture", "1", "/useBaseTexture", "expected true or false");
        generic("name", "[]", "/name", "expected a text, found a list");
        generic("diffuse_color", "[1,2,3]", "/diffuse_color", "expected 4 numbers, found 3");
        generic("diffuse_color", "0.5", "/diffuse_color", "expected a list of 4 numbers");
        generic("diffuse_color", "[1,2,null,4]", "/diffuse_color/2", "expected a number, found null");
        generic("diffuse_texture", "\"a.png\"", "/diffuse_texture", "expected a texture");
        generic("diffuse_texture", "{}", "/diffuse_texture/template", "missing");
        generic("diffuse_texture", R"({"template":"Metal"})", "/diffuse_texture/template", "expected \"Texture\"");
        generic("diffuse_texture", R"({"template":"Texture","transform":[1]})", "/diffuse_texture/transform",
                "expected 9 numbers, found 1");
        generic("x/y~z", R"({"a":[1,{"b":1,"b":2}]})", "/x~1y~0z/a/1/b", "twice");
        generic("x\":1,\"x", "2", "/x", "twice");
        generic("", "2", "/", "empty");
        generic("name", R"("\udc00")", "", "no valid JSON");
        generic("x", R"(["\ud800x"])", "", "no valid JSON");
        generic("id", R"("p0\u0000Y")", "/id", "zero character");
        generic("category", R"("\u0000")", "/category", "zero character");
        row("{\"template\":\"Generic\",\"name\":\"\xff\"}", "", "no valid JSON");
    }

    void badDocumentsAreRefused()
    {
        QFETCH(String, document);
        QFETCH(String, place);
        QFETCH(String, reason);
        const CParseError error = refusal(document);
        QCOMPARE(error.place, place);
        QVERIFY2(error.reason.find(reason) != String::npos, error.reason.c_str());
    }

    void nestingIsBounded()
    {
        const auto nested = [](int levels, const QString& open, const char* inside, const QString& close) {
            return (R"({"template":"Generic","x":)" + open.repeated(levels) + inside + close.repeated(levels) + "}")
                .toStdString();
        };
        QVERIFY(refusal(nested(31, "[", "1", "]")).reason == "was read");
        QVERIFY(refusal(nested(32, "[", "1", "]")).reason.find("nested deeper than 32") != String::npos);
        const char* const sub = R"({"template":"Y","x":)";
        QVERIFY(refusal(nested(40, sub, "1", "}")).reason.find("nested deeper") != String::npos);
        QVERIFY(!refusal(nested(100000, "[", "", "]")).empty());
        QVERIFY(!refusal(nested(100000, sub, "1", "}")).empty());
        QVERIFY(!refusal(String(100000, '[')).empty());
        const auto ring = m_model.make("Plain");
        ring->SetProperty("self", MakePropertyValue(ring));
        QVERIFY(refusal(m_model.text(ring)).reason == "was read");
        ring->RemoveProperty("self");
    }

    void sizeIsBounded()
    {
        const String document = "{\"template\":\"Generic\",\"name\":\"" + String(16 * 1024 * 1024, 'x') + "\"}";
        QVERIFY(refusal(document).reason.find("more than") != String::npos);
        CAppearanceParser parser(m_model.manager);
        QVERIFY(!parser.AppearanceFromFile(m_model.write("huge.json", QByteArray::fromStdString(document))));
        QCOMPARE(parser.GetLastError().place, String("huge.json"));
        QVERIFY(!parser.AppearanceFromFile(m_model.path("").toStdWString()));
        QVERIFY(!parser.AppearanceFromFile(L"/dev/zero"));
        const String small = R"({"template":"Generic"})";
        QVERIFY(parser.AppearanceFromString(small) && parser.GetLastError().empty());
    }

    void mutilatedDocumentsAreRefusedOrRead()
    {
        const auto sample = m_model.make("Generic");
        sample->SetProperty("extra", MakePropertyValue(CRawJson{R"({"a":[1,2,{"b":null}]})"}));
        const String text = m_model.text(sample);
        CAppearanceParser parser(m_model.manager);
        for (std::size_t i = 0; i < text.size(); ++i) {
            QVERIFY2(!parser.AppearanceFromString(text.substr(0, i)), qPrintable(QString::number(i)));
            for (const char byte : {'\0', '"', '}', '9', '\xff'}) {
                String broken = text;
                broken[i] = byte;
                const auto read = parser.AppearanceFromString(broken);
                QVERIFY(read ? AreEqual(*read, *m_model.read(m_model.text(read))) : !parser.GetLastError().empty());
            }
        }
    }

    void aListOfMillionsIsNoVector()
    {
        String document = R"({"template":"Generic","light":[0)";
        for (int i = 0; i < 4000000; ++i)
            document += ",1";
        QVERIFY(refusal(document + "]}").reason.find("expected 3 numbers") != String::npos);
    }

    void bytesAreTheText()
    {
        const auto appearance = m_model.make("Metal");
        std::size_t size = 0;
        const auto bytes = CAppearanceParser(m_model.manager).AppearanceToBytes(appearance, size);
        QCOMPARE(String(bytes.get(), size), m_model.text(appearance));
        QVERIFY(!CAppearanceParser(m_model.manager).AppearanceToBytes({}, size));
        QCOMPARE(size, std::size_t(0));
    }

    /// In a host the locale's codec need not be UTF-8; documents are.
    void narrowTextIsLocal()
    {
        struct Codec {
            Codec() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1")); }
            ~Codec() { QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8")); }
        } latin1;
        const auto appearance = m_model.read("{\"template\":\"Plain\",\"name\":\"gr\u00fcn\"}");
        QCOMPARE(appearance->GetName(), String("gr\xfcn"));
        QVERIFY(m_model.text(appearance).find("gr\u00fcn") != String::npos);
    }
};

MATERIAL_TEST_MAIN(TestDocuments)
#include "TestDocuments.moc"
