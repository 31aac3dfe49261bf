#include "AppearanceExchange.h"

#include "LoadingProgress.h"

#include <AppearanceTextures.h>

#include <glenox/StdStringTrans.h>
#include <kiv/AppearanceParser.h>
#include <kiv/system/StoredPath.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <set>

using kiv::CAppearanceInstancePtr;

namespace {

const QString ArchiveSuffix = QStringLiteral("ggm");
const QString DocumentSuffix = QStringLiteral("json");
constexpr int FewFiles = 10;  // are done before a progress dialog could be read
constexpr int NameLength = 80;
constexpr int ComplaintLength = 300;  // a message box grows with its texts, and a file may hold names of any length

QString suffixOf(const QString& path)
{
    return QFileInfo(path).suffix().toLower();
}

// Not between the halves of a character.
QString cut(const QString& text, int length)
{
    const bool isBetween = text.size() > length && text[length].isLowSurrogate();
    return text.left(isBetween ? length - 1 : length);
}

// What some file system refuses, and blanks and points at the end, which one of them drops.
QString asFileName(const QString& text)
{
    QString name;
    for (const QChar c : cut(text, NameLength)) {
        const bool isRefused = c.unicode() < ' ' || QStringLiteral("\\/:*?\"<>|").contains(c);
        name.append(isRefused ? QLatin1Char('_') : c);
    }
    while (name.endsWith(' ') || name.endsWith('.'))
        name.chop(1);
    return name.trimmed();
}

// Where in the file something is wrong; the file itself is named anyway.
QString reasonOf(const kiv::CParseError& error, const QString& path)
{
    QString text = QString::fromLocal8Bit(error.Text().c_str());
    if (text.startsWith(path))
        text.remove(0, path.size());
    while (text.startsWith('/') || text.startsWith(':') || text.startsWith(' '))
        text.remove(0, 1);
    return text;
}

/// For many steps only.
class Progress {
public:
    Progress(QWidget& owner, const QString& title, const QString& label, const QString& cancel, int steps)
        : m_progress(steps > FewFiles ? std::make_unique<CLoadingProgress>(owner, title, label, cancel, steps)
                                      : nullptr)
    {
    }
    void Advance()
    {
        if (m_progress)
            m_progress->Advance();
    }
    bool IsOver() const { return m_progress && m_progress->IsOver(); }

private:
    std::unique_ptr<CLoadingProgress> m_progress;
};

}  // namespace

// ---- writing

bool CAppearanceExchange::Write(const CAppearanceInstancePtr& appearance, const QString& chosen)
{
    const QString path = archivePath(chosen);
    kiv::CAppearanceParser parser(*m_library.GetMaterialManager());
    if (!parser.AppearanceToZipFile(appearance, path.toStdWString())) {
        complain(path, reasonOf(parser.GetLastError(), path));
        return false;
    }
    if (const int missing = countMissingTextures(*appearance))
        complain(path, tr("%n 个贴图文件找不到，未能一同导出", nullptr, missing));
    return true;
}

void CAppearanceExchange::WriteAll(const Appearances& appearances, const QString& folder)
{
    Progress progress(m_owner, tr("请稍等"), tr("正在导出材质......"), tr("取消"), int(appearances.size()));
    for (const CAppearanceInstancePtr& appearance : appearances) {
        if (progress.IsOver())
            return;
        Write(appearance, freePath(folder, FileName(*appearance)));
        progress.Advance();
    }
}

QString CAppearanceExchange::FileName(const kiv::CAppearanceInstance& appearance) const
{
    const kiv::String shown = m_library.GetMaterialManager()->LocalizeAppearanceString(appearance.GetName());
    const QString name = asFileName(QString::fromLocal8Bit(shown.c_str()));
    return name.isEmpty() ? tr("材质") : name;
}

QString CAppearanceExchange::archivePath(const QString& path) const
{
    const QFileInfo file(path);
    return suffixOf(path) == ArchiveSuffix ? path : freePath(file.path(), file.fileName());
}

QString CAppearanceExchange::freePath(const QString& folder, const QString& name) const
{
    QString path = QDir(folder).filePath(name + '.' + ArchiveSuffix);
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = QDir(folder).filePath(QStringLiteral("%1_%2.%3").arg(name).arg(number).arg(ArchiveSuffix));
    return path;
}

int CAppearanceExchange::countMissingTextures(const kiv::CAppearanceInstance& appearance) const
{
    const auto textures = kiv::FindTextures(appearance);
    return int(std::count_if(textures.begin(), textures.end(), [this](const CAppearanceInstancePtr& texture) {
        const std::wstring file = kiv::GStdStringTrans::StringToWString(texture->GetTextureFile());
        const std::wstring path = m_library.GetMaterialManager()->ResolvePath(file);
        return !kiv::system::IsRegularFile(QString::fromStdWString(path));
    }));
}

// ---- reading

CAppearanceExchange::Appearances CAppearanceExchange::Read(const QStringList& files,
                                                           const kiv::CAppearanceLibrary& library)
{
    Appearances appearances;
    std::set<kiv::String> ids;
    Progress progress(m_owner, tr("请稍等"), tr("正在导入材质......"), tr("取消"), files.size());
    for (const QString& file : files) {
        if (progress.IsOver())
            return {};
        if (const CAppearanceInstancePtr appearance = readFile(file)) {
            const kiv::String id = appearance->GetId();
            if (id.empty() || library.FindInstance(id) || isTaken(id) || ids.count(id) != 0)
                appearance->SetId(kiv::CMaterialLibrary::newGUID());
            ids.insert(appearance->GetId());
            appearances.push_back(appearance);
        }
        progress.Advance();
    }
    return appearances;
}

// Two of one id, one of them in another library, would be mistaken for each other by whoever links by id.
bool CAppearanceExchange::isTaken(const kiv::String& id) const
{
    const kiv::CAppearanceLibraryManager& manager = *m_library.GetMaterialManager();
    return std::any_of(manager.beginLibrary(), manager.endLibrary(),
                       [&](const auto& entry) { return bool(entry.second->FindInstance(id)); });
}

// What cannot be edited could not be taken back either.
CAppearanceInstancePtr CAppearanceExchange::readFile(const QString& path)
{
    kiv::CAppearanceParser parser(*m_library.GetMaterialManager());
    if (!IsExchangeFile(path)) {
        complain(path, tr("既不是材质归档 (.ggm)，也不是材质文档 (.json)"));
        return {};
    }
    const bool isArchive = suffixOf(path) == ArchiveSuffix;
    const auto appearance =
        isArchive ? parser.AppearanceFromZipFile(path.toStdWString()) : parser.AppearanceFromFile(path.toStdWString());
    if (!appearance) {
        complain(path, reasonOf(parser.GetLastError(), path));
        return {};
    }
    appearance->SetEditType(1);
    if (appearance->GetName().empty())
        appearance->SetName(QFileInfo(path).completeBaseName().toLocal8Bit().toStdString());
    if (appearance->GetCategory().empty())
        appearance->SetCategory(appearance->GetTemplateName());
    return appearance;
}

void CAppearanceExchange::complain(const QString& path, const QString& reason)
{
    const QString complaint = QStringLiteral("%1: %2").arg(QFileInfo(path).fileName(), reason);
    const bool isLong = complaint.size() > ComplaintLength;
    m_complaints.append(isLong ? cut(complaint, ComplaintLength) + QStringLiteral("……") : complaint);
}

bool CAppearanceExchange::IsExchangeFile(const QString& path)
{
    return suffixOf(path) == ArchiveSuffix || suffixOf(path) == DocumentSuffix;
}
