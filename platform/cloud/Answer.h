#pragma once

#include "CloudCodes.h"

#include <nuvs/NUVSCallback.h>
#include <nuvs/NUVSRecords.h>

#include <functional>
#include <memory>
#include <utility>

namespace nuvs {

/// What every request owes its caller, whatever it answers. Ends exactly once: later endings are ignored, and one that
/// nobody ended does so in onError as it goes. On the service's thread only.
class CAnswerBase {
public:
    CAnswerBase() = default;
    CAnswerBase(const CAnswerBase&) = delete;
    CAnswerBase& operator=(const CAnswerBase&) = delete;
    virtual ~CAnswerBase() = default;

    virtual void Start() = 0;
    virtual void ReadyRead() = 0;
    virtual void SetReply(QNetworkReply* reply) = 0;
    virtual void TimeOut() = 0;
    virtual void Fail(QNetworkReply::NetworkError error) = 0;
    virtual void Refuse(const SFault& fault) = 0;

    /// A transfer that is taken up again or sent again begins anew; what the caller hears never falls.
    void Received(qint64 bytes, qint64 total)
    {
        m_done = qMax(m_done, bytes);
        m_total = qMax(m_total, total);
        TellReceived(m_done, m_total);
    }
    void Sent(qint64 bytes, qint64 total)
    {
        m_done = qMax(m_done, bytes);
        m_total = qMax(m_total, total);
        TellSent(m_done, m_total);
    }

protected:
    virtual void TellReceived(qint64 bytes, qint64 total) = 0;
    virtual void TellSent(qint64 bytes, qint64 total) = 0;

private:
    qint64 m_done = 0;
    qint64 m_total = -1;
};

using AnswerBasePtr = std::shared_ptr<CAnswerBase>;

enum class EKind { Question, Transfer };

/// The answer with its result; owns the callback.
template <class Result>
class CAnswer final : public CAnswerBase {
public:
    CAnswer(NUVSCallback<Result>* callback, EKind kind) : m_callback(callback), m_kind(kind) {}
    ~CAnswer() override { Fail(QNetworkReply::OperationCanceledError); }

    /// Called after the caller heard the end.
    void WhenEnded(std::function<void()> ended) { m_ended = std::move(ended); }

    void Finish(const Result& result)
    {
        End([&](NUVSCallback<Result>& callback) { callback.onFinished(result); });
    }
    void Start() override
    {
        if (m_callback)
            m_callback->onStart();
    }
    void ReadyRead() override
    {
        if (m_callback)
            m_callback->onReadyRead();
    }
    void SetReply(QNetworkReply* reply) override
    {
        if (m_callback)
            m_callback->setReply(reply);
    }
    void TimeOut() override
    {
        End([](NUVSCallback<Result>& callback) { callback.onTimeOut(); });
    }
    void Fail(QNetworkReply::NetworkError error) override
    {
        End([error](NUVSCallback<Result>& callback) { callback.onError(error); });
    }
    void Refuse(const SFault& fault) override
    {
        if (m_kind == EKind::Transfer && fault.code != code::AlreadyExists && fault.code != code::NotLoggedIn)
            return Fail(fault.error);
        Result result;
        result.code = fault.code;
        Finish(result);
    }

protected:
    void TellReceived(qint64 bytes, qint64 total) override
    {
        if (m_callback)
            m_callback->onDownloadProgress(bytes, total);
    }
    void TellSent(qint64 bytes, qint64 total) override
    {
        if (m_callback)
            m_callback->onUploadProgress(bytes, total);
    }

private:
    // The callback may be on the stack (it gave up its reply while it heard of progress), so it is deleted later.
    template <class Tell>
    void End(Tell tell)
    {
        NUVSCallback<Result>* callback = std::exchange(m_callback, nullptr);
        if (callback) {
            callback->setReply(nullptr);
            tell(*callback);
            callback->deleteLater();
        }
        if (const auto ended = std::exchange(m_ended, nullptr))
            ended();
    }

    NUVSCallback<Result>* m_callback;
    const EKind m_kind;
    std::function<void()> m_ended;
};

template <class Result>
using AnswerPtr = std::shared_ptr<CAnswer<Result>>;

}  // namespace nuvs
