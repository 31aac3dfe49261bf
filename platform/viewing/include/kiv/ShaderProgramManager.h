#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kiv {

/// A shader's text. Compiled by the viewers that draw with it.
class CShader {
public:
    enum EnType { Vertex = 0, Fragment = 1 };
    static constexpr int GLSL = 1;                 ///< the only shader language
    static constexpr int ModelViewProjection = 6;  ///< source of an automatic uniform: the matrix of the node drawn

    CShader(std::string name, int type, int language);

    const std::string& GetName() const { return m_name; }
    int GetType() const { return m_type; }
    int GetLanguage() const { return m_language; }
    bool IsComplete() const { return !m_source.empty(); }
    const std::string& GetSource() const { return m_source; }
    /// False for an empty text.
    bool LoadShaderFromStr(const std::string& source);

    /// A uniform that the viewer sets by itself, from the source given by its number.
    void AddAutoUniform(const std::string& uniform, int source);
    const std::map<std::string, int>& GetAutoUniforms() const { return m_autoUniforms; }

private:
    std::string m_name;
    int m_type;
    int m_language;
    std::string m_source;
    std::map<std::string, int> m_autoUniforms;
};

using CShaderPtr = std::shared_ptr<CShader>;

/// A vertex and a fragment shader that belong together.
class CShaderProgram {
public:
    CShaderProgram(std::string name, int language);

    const std::string& GetName() const { return m_name; }
    int GetLanguage() const { return m_language; }
    bool IsComplete() const { return m_shaders[0] && m_shaders[1]; }
    /// Replaces the shader of the same type.
    void SetShader(const CShaderPtr& shader);
    CShaderPtr GetShader(int type) const;
    /// The attributes "attrVertex", "attrNormal", "attrTexCoord0", "attrTexCoord1" and "attrTangent" get their places
    /// by name.
    void SetAutoAttributeLocations(bool automatic) { m_autoLocations = automatic; }
    bool HasAutoAttributeLocations() const { return m_autoLocations; }

private:
    std::string m_name;
    int m_language;
    CShaderPtr m_shaders[2];
    bool m_autoLocations = false;
};

using CShaderProgramPtr = std::shared_ptr<CShaderProgram>;

/// The programs and shaders of the process by name. User-interface thread.
class CShaderProgramManager {
public:
    static CShaderProgramManager& GetInstance();

    /// The program of the name, made empty when there is none.
    CShaderProgramPtr GetOrCreate(const std::string& name, int language);
    CShaderPtr GetOrCreateShader(const std::string& name, int type, int language);
    /// Forgets all programs and shaders and what viewers compiled of them. Viewers make again what they still draw
    /// with.
    void UnloadAll();
    /// Counts the calls of UnloadAll: who compiled a program under an older number compiles again.
    unsigned GetGeneration() const { return m_generation; }

private:
    CShaderProgramManager() = default;

    std::map<std::string, CShaderProgramPtr> m_programs;
    std::map<std::string, CShaderPtr> m_shaders;
    unsigned m_generation = 0;
};

}  // namespace kiv
