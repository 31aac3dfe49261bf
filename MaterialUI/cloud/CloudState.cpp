#include "CloudState.h"

#include "ThreadSafeKeyIntMap.h"

#include <algorithm>

namespace CloudState {

namespace {

const QString ErrorKey = QStringLiteral("KIVCloudMaterialLib://ErrorCode");
const QString WarningKey = QStringLiteral("KIVCloudMaterialLib://WarningCode");

CThreadSafeKeyIntMap& states()
{
    static CThreadSafeKeyIntMap map;
    return map;
}

int read(const QString& key)
{
    return std::max(0, states().Value(key));
}

int take(const QString& key)
{
    return std::max(0, states().Take(key));
}

}  // namespace

int GetError()
{
    return read(ErrorKey);
}

int GetWarning()
{
    return read(WarningKey);
}

void SetError(int error)
{
    states().SetValue(ErrorKey, error);
}

void SetWarning(int warning)
{
    states().SetValue(WarningKey, warning);
}

int TakeError()
{
    return take(ErrorKey);
}

int TakeWarning()
{
    return take(WarningKey);
}

}  // namespace CloudState
