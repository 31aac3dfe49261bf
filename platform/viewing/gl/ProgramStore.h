#pragma once

#include <kiv/ShaderProgramManager.h>
#include <kiv/StateSet.h>

#include <QOpenGLShaderProgram>

#include <map>
#include <memory>
#include <string>

namespace kiv {

/// What a surface's program has to do. Told to the shaders by #define, since a software renderer computes both sides of
/// each branch.
enum EnSurfaceFeature : unsigned {
    HasBaseTexture = 1,
    HasRelief = 2,    ///< a normal map
    HasSky = 4,       ///< the sky lights it
    MirrorsSky = 8,   ///< sharply, if it lights at all
    RefractsSky = 16  ///< nothing but the sky lies behind it
};

/// A linked program with the places of its uniforms.
class CLinkedProgram {
public:
    QOpenGLShaderProgram& Get() { return m_program; }
    /// -1 for a name that the program does not use.
    int LocationOf(const std::string& uniform);

private:
    QOpenGLShaderProgram m_program;
    std::map<std::string, int> m_locations;
};

/// Puts the programs of materials together from their parts, and links what a program manager was given.
class CProgramStore {
public:
    /// Forgets the reason, and all programs when the program manager has unloaded them.
    void BeginFrame();
    /// The program of a surface with the features: its parts one after the other, or the plain colour for an unshaded
    /// one. Where none of the parts is known or the text does not compile, the plain colour too; of the latter the
    /// reason is kept.
    CLinkedProgram* SurfaceProgram(const CStateSet& stateSet, unsigned features);
    /// Surfaces without any colour, at exactly the depths of the programs above.
    CLinkedProgram* DepthProgram();
    /// Null when it is not complete or does not compile; the reason is kept.
    CLinkedProgram* Link(const CShaderProgram& program);

    /// Lets go of everything; what is still drawn with is linked again.
    void Release() { m_programs.clear(); }

    /// What is wrong with a program that this frame asked for; empty while nothing is.
    const std::string& GetReason() const { return m_reason; }

private:
    struct Entry {
        std::unique_ptr<CLinkedProgram> linked;  // null: it did not compile
        std::string reason;
    };

    CLinkedProgram* surfaceProgram(const std::string& parts, unsigned features,
                                   QByteArray (*fragment)(const std::string&));
    /// The program of an entry, and why there is none.
    CLinkedProgram* use(const Entry& entry);
    Entry link(const QByteArray& vertex, const QByteArray& fragment, const std::string& name) const;
    QByteArray header() const;

    std::map<std::string, Entry> m_programs;
    unsigned m_generation = 0;
    std::string m_reason;
};

}  // namespace kiv
