#include "RemoteName.h"

#include <kiv/system/StoredPath.h>

#include <QUuid>

#include <algorithm>

namespace nuvs {

namespace {

const QLatin1String MarkPrefix(".session-");
constexpr int LongestName = 255;

QString randomDigits()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

}  // namespace

bool IsRemoteName(const QString& name)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    return kiv::system::IsPlainName(name.toStdWString()) && name.toUtf8().size() <= LongestName &&
           name.isValidUtf16() && !IsMarkName(name) && std::none_of(name.cbegin(), name.cend(), isControl);
}

bool IsRemoteId(const QString& id)
{
    const QStringList names = NamesOf(id);
    return std::all_of(names.cbegin(), names.cend(), IsRemoteName);
}

QStringList NamesOf(const QString& id)
{
    return id.isEmpty() ? QStringList() : id.split(QLatin1Char('/'));
}

QString ChildId(const QString& folder, const QString& name)
{
    return folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
}

QString NewMarkName()
{
    return MarkPrefix + randomDigits();
}

// File systems that do not tell case apart would let a name pass for a mark.
bool IsMarkName(const QString& name)
{
    return name.startsWith(MarkPrefix, Qt::CaseInsensitive);
}

QString NewStagingName()
{
    return randomDigits();
}

}  // namespace nuvs
