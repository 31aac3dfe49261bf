#include "ModelFixture.h"

using namespace kiv;

namespace {

/// Writes down what it is told, in the order told; refuses the element of one identifier.
class Recorder : public CAppearanceUIBuilder {
public:
    explicit Recorder(String refused = "-") : m_refused(std::move(refused)) {}

    QStringList calls;

    bool BuildNameLine(const CAppearanceUIElement& e, const String& group) override { return add("name", e, group); }
    bool BuildGroup(const CAppearanceUIElement& e, const String& group) override { return add("group", e, group); }
    bool BuildColor(const CAppearanceUIElement& e, const String& group) override { return add("color", e, group); }
    bool BuildImage(const CAppearanceUIElement& e, const String& group) override { return add("image", e, group); }
    bool BuildNumber(const CAppearanceUIElement& e, const String& group) override { return add("number", e, group); }
    bool BuildSeparator(const CAppearanceUIElement& e, const String& group) override { return add("line", e, group); }
    bool BuildLabel(const CAppearanceUIElement& e, const String& group) override { return add("label", e, group); }

private:
    bool add(const char* kind, const CAppearanceUIElement& element, const String& group)
    {
        const String id = element.GetAttribute("id");
        calls += QString("%1 %2<%3").arg(kind, id.c_str(), group.c_str());
        return id != m_refused;
    }

    String m_refused;
};

}  // namespace

class TestTemplates : public MaterialTest {
    Q_OBJECT

private:
    CAppearanceTemplatePtr fromJson(const String& document, CParseError& error)
    {
        return CAppearanceTemplate::FromJson(document, m_model.manager.FindTemplate("Texture"), error);
    }

    ModelFixture m_model;

private slots:
    void aTemplateIsRead()
    {
        CParseError error;
        const auto type = fromJson(R"({"name":"Slate","category":"Stone","description":"d","schema":{"parameters":{
            "template":{"type":"string","default_value":"Default"},
            "matrix":{"type":"matrix3","default_value":"1, 2,3,4,5,6,7,8,9"},
            "ior":{"type":"float","default_value":"9","range_min":"1","range_max":"3"},
            "edit_type":{"type":"int","default_value":"1"}},
            "shader":{"id":"s","shader_parts":["a","b"],"shader_parts_fast":["c"],"shader_preview":["k"]},
            "vs_uniform_bindings":{"a":"1"},"fs_uniform_bindings":{"t:transform":"trf"},
            "phong_material_bindings":{"ior":"shininess"}},"ui":{}})",
                                   error);
        QVERIFY2(type, error.Text().c_str());
        QStringList keys;
        for (const auto& parameter : type->GetParameters())
            keys += parameter.key.c_str();
        QCOMPARE(keys, QStringList({"category", "edit_type", "id", "ior", "matrix", "name", "tags", "template"}));
        const CAppearanceInstance slate(type);
        QCOMPARE(slate.GetTemplateName(), String("Slate"));
        QCOMPARE(slate.GetCategory(), String("Stone"));
        QCOMPARE(slate.GetEditType(), 1);
        QCOMPARE(slate.ValueOr("ior", 0.0f), 9.0f);
        QCOMPARE(slate.ValueOr("matrix", CMatrix3<float>())(1, 2), 6.0f);
        QCOMPARE(*type->FindParameter("ior")->rangeMax, 3.0);
        QCOMPARE(type->GetShaderParts().size(), std::size_t(2));
        QCOMPARE(type->GetFragmentBindings().at("t:transform"), String("trf"));
        QCOMPARE(type->GetPhongBindings().at("ior"), String("shininess"));
    }

    void badTemplatesAreRefused_data()
    {
        const auto row = testColumns<String, String, String>("document", "place", "reason");
        const auto parameter = [&](const char* json, const char* place, const char* reason) {
            row(json, templateDocument("T", String("\"p\":") + json), ("/schema/parameters/p" + String(place)).c_str(),
                reason);
        };
        const auto element = [&](const char* json, const char* place, const char* reason) {
            row(json, templateDocument("T", R"("f":{"type":"float"},"c":{"type":"color4"})", json),
                ("/ui/StackPanels/0" + String(place)).c_str(), reason);
        };
        row("no JSON", "{", "", "no valid JSON");
        row("no object", "[]", "", "is an object");
        row("no name", "{}", "/name", "no name");
        row("no schema", R"({"name":"T"})", "/schema", "expected an object");
        row("twice", templateDocument("T", R"("p":{"type":"int"},"p":{"type":"int"})"), "/schema/parameters/p",
            "twice");
        row("well-known", templateDocument("T", R"("id":{"type":"int"})"), "/schema/parameters/id", "another type");
        parameter("7", "", "is an object");
        parameter("{}", "/type", "no type \"\"");
        parameter(R"({"type":"double"})", "/type", "no type \"double\"");
        parameter(R"({"type":"float","default_value":0.5})", "/default_value", "expected a text");
        parameter(R"({"type":"float","default_value":"0,5"})", "/default_value", "no value of this type");
        parameter(R"({"type":"float","default_value":"1e39"})", "/default_value", "no value of this type");
        parameter(R"({"type":"int","default_value":"1.0"})", "/default_value", "no value of this type");
        parameter(R"({"type":"bool","default_value":"true"})", "/default_value", "no value of this type");
        parameter(R"({"type":"color4","default_value":"1,1,1"})", "/default_value", "no value of this type");
        parameter(R"({"type":"vec2","default_value":"1,1,1"})", "/default_value", "no value of this type");
        parameter(R"({"type":"Texture","default_value":"a.png"})", "/default_value", "an object");
        parameter(R"({"type":"Texture","default_value":{"scale":"1"}})", "/default_value/scale", "no value");
        parameter(R"({"type":"Texture","default_value":{"template":"Metal"}})", "/default_value/template",
                  "cannot set");
        parameter(R"({"type":"float","range_min":"a"})", "/range_min", "no number");
        parameter(R"({"type":"float","range_min":"2","range_max":"1"})", "/range_min", "reversed");
        element("7", "", "is an object");
        element(R"({"type":"Slider","id":"a"})", "/type", "no element of type \"Slider\"");
        element(R"({"type":"SpinBox","id":"f","parameter":"g"})", "/parameter", "no parameter \"g\"");
        element(R"({"type":"SpinBox","id":"f"})", "/parameter", "shows no parameter");
        element(R"({"type":"SpinBox","parameter":"f"})", "/id", "no identifier");
        element(R"({"type":"SpinBox","id":"c","parameter":"c"})", "/parameter", "of no type");
        element(R"({"type":"SpinBox","id":"f","parameter":"f","range":"1~0"})", "/range", "element \"f\": the lower");
        element(R"({"type":"SpinBox","id":"f","parameter":"f","range":"0-1"})", "/range", "two numbers");
        element(R"({"type":"SpinBox","id":"f","parameter":"f","range":"0~"})", "/range", "two numbers");
        for (const char* range : {"0~1e300", "0~1e-300", "1e300~2e300"})
            element(qPrintable(QString(R"({"type":"SpinBox","id":"f","parameter":"f","range":"%1"})").arg(range)),
                    "/range", "cannot be shown");
        element(R"({"type":"SpinBox","id":"c","parameter":"f"})", "/id", "another type than \"f\"");
        element(R"({"type":"GroupBox","id":"g","checkable":true})", "/checkable", "are texts");
        element(R"({"type":"GroupBox","id":"g","StackPanels":[{"type":"X"}]})", "/StackPanels/0/type", "no element");
        element(R"({"type":"Label","StackPanels":[{"type":"Separator"}]})", "/StackPanels", "only a group");
    }

    void badTemplatesAreRefused()
    {
        QFETCH(String, document);
        QFETCH(String, place);
        QFETCH(String, reason);
        CParseError error;
        QVERIFY(!fromJson(document, error));
        QCOMPARE(error.place, place);
        QVERIFY2(error.reason.find(reason) != String::npos, error.reason.c_str());
    }

    void panelsAreNestedEightDeep()
    {
        const auto panel = [](int levels) {
            String elements;
            for (int i = 0; i < levels; ++i)
                elements.insert(0, R"({"type":"GroupBox","id":"g","StackPanels":[)").append("]}");
            return templateDocument("T", "", elements);
        };
        CParseError error;
        QVERIFY(fromJson(panel(7), error));
        QVERIFY(!fromJson(panel(9), error));
        QVERIFY(error.reason.find("deeper than 8") != String::npos);
        QVERIFY(!fromJson(panel(1500), error));
    }

    void aTextureNeedsItsTemplate()
    {
        CParseError error;
        const String document = templateDocument("T", R"("p":{"type":"Texture"})");
        QVERIFY(!CAppearanceTemplate::FromJson(document, {}, error));
        QCOMPARE(error.place, String("/schema/parameters/p/type"));
    }

    void thePanelIsWalkedInOrder()
    {
        Recorder recorder;
        QVERIFY(m_model.manager.BuildUI("Generic", recorder));
        QCOMPARE(recorder.calls,
                 QStringList({"name name<", "group general<", "color diffuse_color<general", "group inner<general",
                              "image diffuse_texture<inner", "number roughness<general", "line <", "label <"}));
    }

    void aRefusedElementEndsTheWalk()
    {
        Recorder recorder("inner");
        QVERIFY(!m_model.manager.BuildUI("Generic", recorder));
        QCOMPARE(recorder.calls.last(), QString("group inner<general"));
    }

    void thePanelOfAPathIsFound()
    {
        // The first and the last segment may name a type; what names none has the panel of all.
        const std::pair<const char*, const char*> cases[] = {{"Metal", "number metallic<"},
                                                             {"Metal/Steel/Brushed", "number metallic<"},
                                                             {"/Metal/", "number metallic<"},
                                                             {"Generic/Metal", "number metallic<"},
                                                             {"Plain", "name name<"},
                                                             {"Ceiling/White", "name name<"},
                                                             {"", "name name<"}};
        for (const auto& [path, first] : cases) {
            Recorder recorder;
            QVERIFY2(m_model.manager.BuildUI(path, recorder), path);
            QCOMPARE(recorder.calls.first(), QString(first));
            QVERIFY(!CAppearanceLibraryManager().BuildUI(path, recorder));
        }
    }
};

MATERIAL_TEST_MAIN(TestTemplates)
#include "TestTemplates.moc"
