#include "FuzzSupport.h"

#include <kiv/AppearanceParser.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <zip.h>

#include <cstdint>

namespace {

// Blind changes seldom leave a zip with right checksums. So an input that does not start like one describes one:
// members behind lines of "---", a member's first line its name and the rest its content.
bool writeDescribed(const QString& path, const QByteArray& input)
{
    zip_t* archive = zip_open(QFile::encodeName(path).constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    fuzz::require(archive != nullptr, "the archive can be made");
    QList<QByteArray> kept;  // until closing has read them
    const QString text = QString::fromLatin1(input);
    for (const QString& member : text.split("\n---\n")) {
        const QByteArray name = member.section('\n', 0, 0).toLatin1();
        kept.append(member.section('\n', 1).toLatin1());
        zip_source_t* source = zip_source_buffer(archive, kept.last().constData(), kept.last().size(), 0);
        if (zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_GUESS) < 0)
            zip_source_free(source);
    }
    const bool written = zip_close(archive) == 0;
    if (!written)
        zip_discard(archive);
    return written && QFile::exists(path);
}

bool writeBytes(const QString& path, const QByteArray& input)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(input) == input.size();
}

bool isEmptyBelow(const QString& folder)
{
    for (const QFileInfo& entry : QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        if (!entry.isDir() || !isEmptyBelow(entry.filePath()))
            return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QTemporaryDir work;
    const QString archive = work.filePath("input.ggm");
    const QString favorites = work.filePath("favorites");
    QDir(work.path()).mkdir("favorites");
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<int>(size));
    if (!(input.startsWith("PK") ? writeBytes(archive, input) : writeDescribed(archive, input)))
        return 0;

    fuzz::manager().SetFavoriteLibraryPath(favorites.toStdWString());
    kiv::CAppearanceParser parser(fuzz::manager());
    const kiv::CAppearanceInstancePtr appearance = parser.AppearanceFromZipFile(archive.toStdWString());

    fuzz::require((appearance == nullptr) != parser.GetLastError().empty(), "a refusal has a reason");
    fuzz::require(QDir(work.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size() == 2,
                  "nothing is unpacked beside the place meant for it");
    if (appearance)
        fuzz::requireRoundTrip(appearance);
    else
        fuzz::require(isEmptyBelow(favorites), "a refused archive leaves no file behind");
    return 0;
}
