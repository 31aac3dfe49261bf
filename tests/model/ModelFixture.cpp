#include "ModelFixture.h"

#include <TestFiles.h>

using namespace kiv;

namespace {

const char* const TextureParameters = R"("texture_file":{"type":"string"},
    "environment_mode":{"type":"string","default_value":"MODULATE"},"rotation":{"type":"float","default_value":"0"},
    "scale":{"type":"vec2","default_value":"1,1"},"transform":{"type":"matrix3"})";

const char* const GenericParameters = R"("diffuse_color":{"type":"color4","default_value":"0.5,0.5,0.5,1"},
    "transparent":{"type":"float","default_value":"1","range_min":"0","range_max":"1"},
    "roughness":{"type":"float","default_value":"0.5"},"useBaseTexture":{"type":"bool","default_value":"0"},
    "count":{"type":"int","default_value":"3"},"light":{"type":"vec3","default_value":"30,30,30"},
    "diffuse_texture":{"type":"Texture","default_value":{"id":"textureUnit0","rotation":"45"}},
    "bump_texture":{"type":"Texture","default_value":{"id":"textureUnit1"}})";

const char* const GenericPanel = R"({"type":"LineEdit","id":"name","parameter":"name","label":"Name:"},
    {"type":"GroupBox","id":"general","label":"General","StackPanels":[
        {"type":"ColorButton","id":"diffuse_color","parameter":"diffuse_color","label":"Diffuse"},
        {"type":"GroupBox","id":"inner","checkable":"1","parameter":"useBaseTexture","label":"Picture","StackPanels":[
            {"type":"ImageButton","id":"diffuse_texture","parameter":"diffuse_texture"}]},
        {"type":"SpinBox","id":"roughness","parameter":"roughness","range":"0~1"}]},
    {"type":"Separator"},
    {"type":"Label","label":"The end"})";

const char* const MetalParameters = R"("diffuse_color":{"type":"vec4","default_value":"0.8,0.8,0.8,1"},
    "roughness":{"type":"float","default_value":"0.2"},"metallic":{"type":"float","default_value":"1"},
    "count":{"type":"float","default_value":"0.25"},"diffuse_texture":{"type":"Texture"})";

const char* const MetalPanel = R"({"type":"SpinBox","id":"metallic","parameter":"metallic","range":"0~1"})";

}  // namespace

String templateDocument(const String& name, const String& parameters, const String& elements)
{
    return R"({"name":")" + name + R"(","category":")" + name + R"(","description":"","schema":{"parameters":{)" +
           parameters +
           R"(},"shader":{"id":"x","shader_parts":["a"],"shader_preview":["diffuse_texture","diffuse_color"]}},)" +
           R"("ui":{"version":"1.0","title":"x","StackPanels":[)" + elements + "]}}";
}

ModelFixture::ModelFixture()
{
    const auto add = [this](const char* name, const char* parameters, const char* panel) {
        CParseError error;
        const auto type = CAppearanceTemplate::FromJson(templateDocument(name, parameters, panel),
                                                        manager.FindTemplate("Texture"), error);
        if (!type)
            qFatal("%s", error.Text().c_str());
        manager.AddTemplate(type);
    };
    add("Texture", TextureParameters, "");
    add("Generic", GenericParameters, GenericPanel);
    add("Metal", MetalParameters, MetalPanel);
    add("Plain", R"("roughness":{"type":"float","default_value":"0.75"})", "");
}

CAppearanceInstancePtr ModelFixture::read(const String& document)
{
    CAppearanceParser parser(manager);
    const auto appearance = parser.AppearanceFromString(document);
    if (!appearance)
        QTest::qFail(parser.GetLastError().Text().c_str(), __FILE__, __LINE__);
    return appearance ? appearance : std::make_shared<CAppearanceInstance>();
}

String ModelFixture::text(const CAppearanceInstancePtr& appearance)
{
    return CAppearanceParser(manager).AppearanceToString(appearance);
}

CAppearanceInstancePtr ModelFixture::make(const char* type)
{
    const auto appearance = manager.CreateAppearanceInstance(manager.FindTemplate(type), type);
    appearance->SetId(String("id of ") + type);
    return appearance;
}

std::wstring ModelFixture::write(const QString& name, const QByteArray& bytes) const
{
    return writeFile(path(name), bytes).toStdWString();
}
