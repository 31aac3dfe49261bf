#include <kiv/ShaderProgramManager.h>

namespace kiv {

CShader::CShader(std::string name, int type, int language) : m_name(std::move(name)), m_type(type), m_language(language)
{
}

bool CShader::LoadShaderFromStr(const std::string& source)
{
    if (source.empty())
        return false;
    m_source = source;
    return true;
}

void CShader::AddAutoUniform(const std::string& uniform, int source)
{
    m_autoUniforms[uniform] = source;
}

CShaderProgram::CShaderProgram(std::string name, int language) : m_name(std::move(name)), m_language(language)
{
}

void CShaderProgram::SetShader(const CShaderPtr& shader)
{
    if (shader && (shader->GetType() == CShader::Vertex || shader->GetType() == CShader::Fragment))
        m_shaders[shader->GetType()] = shader;
}

CShaderPtr CShaderProgram::GetShader(int type) const
{
    return type == CShader::Vertex || type == CShader::Fragment ? m_shaders[type] : nullptr;
}

CShaderProgramManager& CShaderProgramManager::GetInstance()
{
    static CShaderProgramManager instance;
    return instance;
}

CShaderProgramPtr CShaderProgramManager::GetOrCreate(const std::string& name, int language)
{
    CShaderProgramPtr& program = m_programs[name];
    if (!program)
        program = std::make_shared<CShaderProgram>(name, language);
    return program;
}

CShaderPtr CShaderProgramManager::GetOrCreateShader(const std::string& name, int type, int language)
{
    CShaderPtr& shader = m_shaders[name];
    if (!shader)
        shader = std::make_shared<CShader>(name, type, language);
    return shader;
}

void CShaderProgramManager::UnloadAll()
{
    m_programs.clear();
    m_shaders.clear();
    ++m_generation;
}

}  // namespace kiv
