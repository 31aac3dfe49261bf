#include "LibraryFixture.h"

#include "TestFiles.h"

#include <QBuffer>
#include <QDir>
#include <QDirIterator>
#include <QImage>

LibraryFixture::LibraryFixture()
{
    const QDir shipped(MATERIAL_TESTS_DIR "/../data/templates");
    QDir().mkpath(path("favorites"));
    QDir().mkpath(path("textures"));
    QDir().mkpath(path("library/texts"));
    QDir().mkpath(path("library/System Library"));
    QDir().mkpath(path("library/templates"));
    write("library/library.json", R"({"textureUnit":"mm"})");
    for (const QString& name : shipped.entryList({"*.json"}, QDir::Files))
        write("library/templates/" + name, readFile(shipped.filePath(name)));
    m_library.Open(paths());
}

kiv::CMaterialLibraryPaths LibraryFixture::paths() const
{
    return {widePath("library"), widePath("textures"), widePath("favorites")};
}

void LibraryFixture::write(const QString& relative, const QByteArray& bytes) const
{
    writeFile(path(relative), bytes);
}

QByteArray LibraryFixture::read(const QString& relative) const
{
    return readFile(path(relative));
}

QMap<QString, QByteArray> LibraryFixture::tree(const QString& relative) const
{
    QMap<QString, QByteArray> found;
    const QDir root(path(relative));
    QDirIterator walk(root.path(), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString name = root.relativeFilePath(walk.next());
        if (walk.fileInfo().isDir())
            found.insert(name + "/", {});
        else
            found.insert(name, read(relative + "/" + name));
    }
    return found;
}

kiv::CAppearanceInstancePtr LibraryFixture::makeAppearance(const kiv::String& id, const kiv::String& diffuse,
                                                           const kiv::String& bump)
{
    const auto appearance = manager().CreateAppearanceInstance(manager().FindTemplate("Generic"), id);
    appearance->SetId(id);
    appearance->GetDiffuseTexture()->SetTextureFile(diffuse);
    appearance->GetBumpTexture()->SetTextureFile(bump);
    return appearance;
}

QByteArray LibraryFixture::document(const kiv::CAppearanceInstancePtr& appearance)
{
    return QByteArray::fromStdString(kiv::CAppearanceParser(manager()).AppearanceToString(appearance));
}

QByteArray makePicture(const QColor& color, const char* format)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}
