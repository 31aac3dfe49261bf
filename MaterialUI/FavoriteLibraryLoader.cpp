#include "FavoriteLibraryLoader.h"

#include "LoadingProgress.h"

#include <MessageBoxes.h>

#include <QFile>

#include <algorithm>
#include <filesystem>

namespace {

constexpr int LongestRefusal = 300;  // reasons quote what they refuse

const QLatin1String ArchiveSuffix(".ggm");
const QLatin1String DocumentSuffix(".json");

std::filesystem::path machinePath(const QString& path)
{
#ifdef Q_OS_WIN
    return path.toStdWString();
#else
    return QFile::encodeName(path).toStdString();
#endif
}

QString fileName(const std::filesystem::path& path)
{
#ifdef Q_OS_WIN
    return QString::fromStdWString(path.filename().wstring());
#else
    return QFile::decodeName(path.filename().c_str());
#endif
}

}  // namespace

// By name, so that it does not depend on the disk which of two files with the same id is taken. The suffixes are
// compared as they stand, also where the file system would not tell ".JSON" from ".json".
QStringList CFavoriteLibraryLoader::filesOf(const QString& folder)
{
    QStringList files;
    std::error_code error;
    const std::filesystem::path path = machinePath(folder);
    std::filesystem::create_directories(path, error);
    std::filesystem::directory_iterator entry;
    if (!error)
        entry = std::filesystem::directory_iterator(path, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const QString name = fileName(entry->path());
        std::error_code unknown;
        if ((name.endsWith(ArchiveSuffix) || name.endsWith(DocumentSuffix)) && entry->is_regular_file(unknown))
            files.append(folder + QLatin1Char('/') + name);
    }
    if (error)
        m_folderReason = QString::fromLocal8Bit(error.message().c_str());
    std::sort(files.begin(), files.end());
    return files;
}

bool CFavoriteLibraryLoader::Load(const QString& folder, kiv::CAppearanceLibrary& library)
{
    const QStringList files = filesOf(folder);
    if (files.isEmpty())
        return m_folderReason.isEmpty();
    CLoadingProgress progress(m_owner, tr("请稍等"), tr("正在载入我的材质......"), tr("取消"), files.size());
    kiv::CAppearanceParser parser(m_manager);
    for (const QString& file : files) {
        if (progress.IsOver())
            return false;
        load(file, parser, library);
        progress.Advance();
    }
    return m_folderReason.isEmpty() && m_refusals.isEmpty();
}

void CFavoriteLibraryLoader::load(const QString& file, kiv::CAppearanceParser& parser, kiv::CAppearanceLibrary& library)
{
    const std::wstring path = file.toStdWString();
    const auto appearance =
        file.endsWith(ArchiveSuffix) ? parser.AppearanceFromZipFile(path) : parser.AppearanceFromFile(path);
    if (!appearance) {
        refuse(QString::fromLocal8Bit(parser.GetLastError().Text().c_str()));
        return;
    }
    const QString id = QString::fromLocal8Bit(appearance->GetId().c_str());
    if (!m_files.contains(id))
        m_files.insert(id, file);
    m_paths.Reroot(*appearance);
    library.AddInstance(appearance);
}

void CFavoriteLibraryLoader::refuse(const QString& reason)
{
    const bool isLong = reason.size() > LongestRefusal;
    m_refusals.append(isLong ? reason.left(LongestRefusal - 1) + QStringLiteral("…") : reason);
}

QString CFavoriteLibraryLoader::GetNotice() const
{
    if (!m_folderReason.isEmpty())
        return tr("收藏文件夹不可用：%1").arg(m_folderReason);
    return m_refusals.isEmpty() ? QString() : tr("%1 个收藏无法读取").arg(m_refusals.size());
}

QString CFavoriteLibraryLoader::GetNoticeDetails() const
{
    return MessageBoxes::Lines(m_refusals);
}
