#pragma once

#include "CloudCallback.h"

#include <nuvs/NUVSRecords.h>

/// The end of a login. With `notifyOnSuccess` a success starts the login timer of the cloud service, so that what
/// follows is done on the user-interface thread.
class KIVLoginCallback : public CCloudCallback<NUVSLoginInfo> {
public:
    explicit KIVLoginCallback(bool notifyOnSuccess) : m_notifyOnSuccess(notifyOnSuccess) {}

protected:
    void Answered(const NUVSLoginInfo& result, bool isSessionLost) override;

private:
    bool m_notifyOnSuccess;
};
