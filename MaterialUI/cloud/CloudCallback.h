#pragma once

#include "CloudErrorCodes.h"
#include "CloudState.h"

#include <nuvs/NUVSCallback.h>

/// What all callbacks of the product do: a finished request clears the warning of an earlier time-out, a lost session
/// and a time-out are kept for the dialogs. Runs on the service's thread: derived classes touch nothing but what is
/// locked.
template <typename T>
class CCloudCallback : public NUVSCallback<T> {
public:
    void onFinished(T result) override
    {
        CloudState::TakeWarning();
        CloudErrorCodes::Log(result.code);
        const bool isSessionLost = result.code == CloudErrorCodes::SessionLost;
        if (isSessionLost)
            CloudState::SetError(CloudState::LoggedInElsewhere);
        Answered(result, isSessionLost);
    }
    void onTimeOut() override
    {
        CloudState::SetWarning(CloudState::TimedOut);
        NotAnswered();
    }
    void onError(QNetworkReply::NetworkError /*error*/) override { NotAnswered(); }

protected:
    virtual void Answered(const T& result, bool isSessionLost) = 0;
    /// A time-out or an error; it will not be answered any more.
    virtual void NotAnswered() {}
};
