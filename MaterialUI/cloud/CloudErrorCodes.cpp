#include "CloudErrorCodes.h"

#include <QLoggingCategory>

#include <algorithm>
#include <iterator>

namespace CloudErrorCodes {

namespace {

Q_LOGGING_CATEGORY(cloud, "materialui.cloud", QtInfoMsg)

struct Entry {
    const char* code;
    const char* message;
};

constexpr Entry Table[] = {
    {"NUVS_000001", "File or folder already exists"},
    {"NUVS_000002", "You have not loginned yet or your account has just been loginned somewhere else"},
    {"NUVS_000003", "You have not inited appdata yet"},
    {"NUVS_000004", "Json error"},
    {"NUVS_000005", "File not exist"},
    {"NUVS_000006", "Folder not exist"},
    {"NUVS_000007", "Path invalid"},
    {"NUVS_000008", "Can not get app access token"},
    {"NUVS_000009", "Can not open file"},
    {"NUVS_000010", "Can not get url"},
    {"NUVS_000011", "Folder name is empty"},
    {"NUVS_000012", "Filepath is empty"},
    {"NUVS_000013", "You have loginned with other account"},
    {"NUVS_100001", "No connection"},
    {"NUVS_100002", "Time out"},
    {"NUVS_100003", "Server error"},
};

}  // namespace

const QString SessionLost = QStringLiteral("NUVS_000002");
const QString AlreadyExists = QStringLiteral("NUVS_000001");

QString Message(const QString& code)
{
    const auto* found = std::find_if(std::begin(Table), std::end(Table),
                                     [&](const Entry& entry) { return code == QLatin1String(entry.code); });
    return found == std::end(Table) ? QString() : QString::fromLatin1(found->message);
}

void Log(const QString& code)
{
    if (!code.isEmpty())
        qCDebug(cloud).noquote() << code << Message(code);
}

}  // namespace CloudErrorCodes
