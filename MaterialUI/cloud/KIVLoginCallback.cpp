#include "KIVLoginCallback.h"

#include "CloudService.h"

void KIVLoginCallback::Answered(const NUVSLoginInfo& result, bool isSessionLost)
{
    if (!isSessionLost && result.success && m_notifyOnSuccess)
        CCloudService::Instance().StartLoginTimer();
}
