#include "IncludeRules.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>

namespace {

struct Room {
    QString folder;
    QStringList below;    // rooms of which it may include what they offer
    QStringList beside;   // rooms of which it may include exported classes only
    QStringList widgets;  // Qt widget classes that it may use; "*": all
};

const QStringList s_platform = {"platform/geometry", "platform/glenox",  "platform/system",
                                "platform/cloud",    "platform/viewing", "platform/model"};
const QStringList s_product = {"MaterialUI/model", "MaterialUI/browser", "MaterialUI/editor",
                               "MaterialUI/cloud", "MaterialUI/project", "MaterialUI/NetworkService",
                               "MaterialUI"};

Room platformRoom(const QString& name, const QStringList& below)
{
    return {"platform/" + name, below, {}, {}};
}

// The rooms that the root widget ties together.
Room productRoom(const QString& name)
{
    QStringList beside = s_product;
    beside.removeAll("MaterialUI");
    return {"MaterialUI/" + name, s_platform + QStringList{"MaterialUI/model"}, beside, {"*"}};
}

// A room inside another comes before it.
const QList<Room>& rooms()
{
    static const QList<Room> all = {
        platformRoom("geometry", {}),
        platformRoom("glenox", {}),
        {"platform/system", {"platform/glenox"}, {}, {"QMessageBox"}},
        platformRoom("cloud", {"platform/glenox", "platform/system"}),
        {"platform/viewing", {"platform/geometry", "platform/glenox", "platform/system"}, {}, {"QWidget"}},
        platformRoom("model", {"platform/viewing", "platform/geometry", "platform/glenox", "platform/system"}),
        {"MaterialUI/model", s_platform, {}, {"QApplication", "QMessageBox"}},
        productRoom("browser"),
        productRoom("editor"),
        productRoom("cloud"),
        productRoom("project"),
        productRoom("NetworkService"),
        {"MaterialUI", s_platform + s_product, {}, {"*"}},
        {"tools", s_platform + QStringList{"MaterialUI/model"}, {}, {}},
        {"apps", s_platform + s_product, {}, {"*"}},
    };
    return all;
}

const Room* findRoom(const QString& file)
{
    for (const Room& room : rooms())
        if (file.startsWith(room.folder + '/'))
            return &room;
    return nullptr;
}

bool isWidgetHeader(const QString& name)
{
    return QFile::exists(QStringLiteral(QT_WIDGETS_HEADERS "/") + name.section('/', -1));
}

QString readText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

CIncludeRules::CIncludeRules(const QString& root) : m_root(root)
{
    for (const char* folder : {"platform", "MaterialUI", "tools", "apps"}) {
        QDirIterator walk(root + '/' + folder, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext())
            m_files.append(QDir(root).relativeFilePath(walk.next()));
    }
    m_files.sort();
}

QStringList CIncludeRules::FindViolations() const
{
    QStringList violations;
    for (const QString& file : m_files)
        violations += findRoom(file) ? CheckFile(file) : QStringList{file + ": lies in no room that has rules"};
    return violations;
}

QStringList CIncludeRules::CheckFile(const QString& file) const
{
    static const QRegularExpression include(R"re(^\s*#\s*include\s*([<"])([^>"]+)[>"])re");
    QStringList violations;
    const QStringList lines = readText(m_root + '/' + file).split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = include.match(lines[i]);
        if (!match.hasMatch())
            continue;
        const QString wrong = CheckInclude(file, match.captured(2), match.captured(1) == "<");
        if (!wrong.isEmpty())
            violations.append(QString("%1:%2: %3").arg(file).arg(i + 1).arg(wrong));
    }
    return violations;
}

QString CIncludeRules::CheckInclude(const QString& file, const QString& included, bool angled) const
{
    const QString target = FindTarget(file, included, angled);
    if (!target.isEmpty())
        return CheckArrow(file, target, angled);
    const QStringList& widgets = findRoom(file)->widgets;
    if (isWidgetHeader(included) && !widgets.contains("*") && !widgets.contains(included))
        return findRoom(file)->folder + " uses no widget class, but includes " + included;
    return {};
}

QString CIncludeRules::CheckArrow(const QString& file, const QString& target, bool angled) const
{
    const Room* from = findRoom(file);
    const Room* to = findRoom(target);
    if (from == to)
        return {};
    const QString arrow = from->folder + " includes " + target;
    if (!to || !(from->below.contains(to->folder) || from->beside.contains(to->folder)))
        return arrow + ", which is not below it";
    if (to->folder.startsWith("platform/") && !target.startsWith(to->folder + "/include/"))
        return arrow + ", which is private to " + to->folder;
    // A host that has the closed libraries brings these folders, so that the include path is the seam.
    if (to->folder.startsWith("platform/") && !angled)
        return arrow + " in quotes; other rooms write <kiv/...>, <glenox/...> or <nuvs/...>";
    if (!from->below.contains(to->folder) && !IsExported(target))
        return arrow + ", which is not exported by " + to->folder;
    return {};
}

// As the compiler would: beside the file first, then by the include folders. Empty for what is not the repository's
// own.
QString CIncludeRules::FindTarget(const QString& file, const QString& included, bool angled) const
{
    const QString beside = QDir::cleanPath(file.section('/', 0, -2) + '/' + included);
    if (!angled && m_files.contains(beside))
        return beside;
    const QStringList candidates =
        m_files.filter(QRegularExpression("(^|/)" + QRegularExpression::escape(included) + '$'));
    for (const QString& candidate : candidates)
        if (findRoom(candidate) == findRoom(file))
            return candidate;
    return candidates.value(0);
}

bool CIncludeRules::IsExported(const QString& header) const
{
    return readText(m_root + '/' + header).contains("MATERIALUI_EXPORT");
}
