#include "ProgramStore.h"

#include "RenderDevice.h"

#include <QFile>

#include <algorithm>
#include <cctype>

// Outside of any namespace: resources of a static library are not found before.
static void initViewingResources()
{
    Q_INIT_RESOURCE(viewing_shaders);
}

namespace kiv {

namespace {

const char* const Plain = "unshaded";

QByteArray textOf(const QString& name)
{
    static const bool initialized = (initViewingResources(), true);
    Q_UNUSED(initialized)
    QFile file(":/viewing/" + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() + "\n" : QByteArray();
}

QByteArray partText(const std::string& part)
{
    return textOf("parts/" + QString::fromStdString(part) + ".glsl");
}

// The name of a part is the name of its function: anything else is no part.
bool isPartName(const std::string& name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c); });
}

// Asked for each surface of each frame, so whether there are such parts is left to who makes the program.
std::string keyOf(const CStateSet& stateSet)
{
    if (stateSet.GetShading() == EnShading::Unshaded)
        return Plain;
    std::string key;
    for (const std::string& part : stateSet.GetShaderParts())
        key += isPartName(part) ? part + " " : "";
    return key.empty() ? Plain : key;
}

QByteArray definitions(unsigned features)
{
    constexpr std::pair<unsigned, const char*> names[] = {{HasBaseTexture, "HAS_BASE_TEXTURE"},
                                                          {HasRelief, "HAS_RELIEF"},
                                                          {HasSky, "HAS_SKY"},
                                                          {MirrorsSky, "MIRRORS_SKY"},
                                                          {RefractsSky, "REFRACTS_SKY"}};
    QByteArray text;
    for (const auto& [feature, name] : names)
        text += features & feature ? QByteArray("#define ") + name + "\n" : QByteArray();
    return text;
}

QByteArray fragmentText(const std::string& parts)
{
    QByteArray text = textOf("inputs.glsl") + textOf("terms.glsl") + textOf("environment.glsl");
    QByteArray calls;
    for (const QByteArray& part : QByteArray::fromStdString(parts).split(' ')) {
        const QByteArray known = part.isEmpty() ? QByteArray() : partText(part.toStdString());
        text += known;
        calls += known.isEmpty() ? QByteArray() : "    " + part + "(s);\n";
    }
    if (calls.isEmpty())
        return fragmentText(Plain);
    return text + "void main()\n{\n    Surface s = surfaceHere();\n" + calls +
           "    gl_FragColor = vec4(encodeSrgb(toneCurve(clamp(s.color, 0.0, 64.0))), s.alpha);\n}\n";
}

}  // namespace

int CLinkedProgram::LocationOf(const std::string& uniform)
{
    const auto known = m_locations.find(uniform);
    if (known != m_locations.end())
        return known->second;
    return m_locations[uniform] = m_program.uniformLocation(uniform.c_str());
}

QByteArray CProgramStore::header() const
{
    if (QOpenGLContext::currentContext()->format().majorVersion() >= 3)
        return "#version 130\n#define textureCubeLod textureLod\n#define textureCube texture\n";
    return "#version 120\n#extension GL_ARB_shader_texture_lod : require\n";
}

CProgramStore::Entry CProgramStore::link(const QByteArray& vertex, const QByteArray& fragment,
                                         const std::string& name) const
{
    auto linked = std::make_unique<CLinkedProgram>();
    QOpenGLShaderProgram& program = linked->Get();
    program.bindAttributeLocation("attrVertex", VertexAttribute);
    program.bindAttributeLocation("attrNormal", NormalAttribute);
    program.bindAttributeLocation("attrTexCoord0", TexCoord0Attribute);
    program.bindAttributeLocation("attrTexCoord1", TexCoord1Attribute);
    program.bindAttributeLocation("attrTangent", TangentAttribute);
    QOpenGLShader vertexShader(QOpenGLShader::Vertex);
    QOpenGLShader fragmentShader(QOpenGLShader::Fragment);
    const bool isLinked = vertexShader.compileSourceCode(vertex) && fragmentShader.compileSourceCode(fragment) &&
                          program.addShader(&vertexShader) && program.addShader(&fragmentShader) && program.link();
    program.removeAllShaders();
    if (isLinked)
        return {std::move(linked), {}};
    return {nullptr, "the shader program \"" + name + "\" cannot be used: " +
                         (vertexShader.log() + fragmentShader.log() + program.log()).trimmed().toStdString()};
}

void CProgramStore::BeginFrame()
{
    const unsigned generation = CShaderProgramManager::GetInstance().GetGeneration();
    if (generation != m_generation)
        m_programs.clear();
    m_generation = generation;
    m_reason.clear();
}

CLinkedProgram* CProgramStore::use(const Entry& entry)
{
    if (!entry.linked)
        m_reason = entry.reason;
    return entry.linked.get();
}

CLinkedProgram* CProgramStore::surfaceProgram(const std::string& parts, unsigned features,
                                              QByteArray (*fragment)(const std::string&))
{
    const std::string key = parts + '\0' + std::to_string(features);
    auto known = m_programs.find(key);
    if (known == m_programs.end()) {
        const QByteArray start = header() + definitions(features);
        Entry entry = link(start + textOf("surface.vert"), start + fragment(parts), parts);
        known = m_programs.emplace(key, std::move(entry)).first;
    }
    return use(known->second);
}

CLinkedProgram* CProgramStore::SurfaceProgram(const CStateSet& stateSet, unsigned features)
{
    const std::string parts = keyOf(stateSet);
    // Nothing but its texture matters to what is not shaded.
    const auto program = [&](const std::string& of) {
        return surfaceProgram(of, of == Plain ? features & HasBaseTexture : features, fragmentText);
    };
    CLinkedProgram* own = program(parts);
    return own ? own : program(Plain);
}

CLinkedProgram* CProgramStore::DepthProgram()
{
    return surfaceProgram("depth only", 0, [](const std::string&) { return QByteArray("void main()\n{\n}\n"); });
}

CLinkedProgram* CProgramStore::Link(const CShaderProgram& program)
{
    if (!program.IsComplete()) {
        m_reason = "the shader program \"" + program.GetName() + "\" lacks a shader";
        return nullptr;
    }
    const std::string& vertex = program.GetShader(CShader::Vertex)->GetSource();
    const std::string& fragment = program.GetShader(CShader::Fragment)->GetSource();
    // A text may be loaded anew under the same name.
    const std::string key = program.GetName() + '\0' + vertex + '\0' + fragment;
    auto known = m_programs.find(key);
    if (known == m_programs.end())
        known = m_programs
                    .emplace(key, link(QByteArray::fromStdString(vertex), QByteArray::fromStdString(fragment),
                                       program.GetName()))
                    .first;
    return use(known->second);
}

}  // namespace kiv
