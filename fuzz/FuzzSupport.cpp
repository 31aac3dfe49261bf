#include "FuzzSupport.h"

#include <kiv/AppearanceParser.h>

#include <QDir>
#include <QFile>
#include <QTextCodec>

#include <cstdio>
#include <cstdlib>

namespace {

void addTemplate(kiv::CAppearanceLibraryManager& manager, const QString& path)
{
    QFile file(path);
    fuzz::require(file.open(QIODevice::ReadOnly), "a shipped template cannot be read");
    kiv::CParseError error;
    const auto read =
        kiv::CAppearanceTemplate::FromJson(file.readAll().toStdString(), manager.FindTemplate("Texture"), error);
    fuzz::require(read != nullptr, error.Text().c_str());
    manager.AddTemplate(read);
}

kiv::CAppearanceLibraryManager& makeManager()
{
    static kiv::CAppearanceLibraryManager manager;
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    const QDir folder(QStringLiteral(MATERIAL_TEMPLATES_DIR));
    addTemplate(manager, folder.filePath("Texture.json"));
    for (const QString& name : folder.entryList({"*.json"}, QDir::Files))
        addTemplate(manager, folder.filePath(name));
    return manager;
}

}  // namespace

kiv::CAppearanceLibraryManager& fuzz::manager()
{
    static kiv::CAppearanceLibraryManager& made = makeManager();
    return made;
}

void fuzz::require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "fuzz: does not hold: %s\n", what);
    std::abort();
}

void fuzz::requireRoundTrip(const kiv::CAppearanceInstancePtr& appearance)
{
    kiv::CAppearanceParser parser(manager());
    const kiv::String written = parser.AppearanceToString(appearance);
    const kiv::CAppearanceInstancePtr again = parser.AppearanceFromString(written);
    require(again != nullptr, ("what was written is refused: " + parser.GetLastError().Text()).c_str());
    require(AreEqual(*appearance, *again), "what was written reads back to another appearance");
    require(parser.AppearanceToString(again) == written, "writing again gives another text");
}
