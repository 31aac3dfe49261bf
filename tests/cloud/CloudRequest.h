#pragma once

#include <nuvs/NUVSCloudService.h>

#include <QStringList>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>

/// What came back of one request.
template <typename T>
struct COutcome {
    T result;
    QStringList endings;  ///< "done", a code, "time-out" or "error"; of a service that keeps its word exactly one
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    bool progressFell = false;
    qint64 progress = 0;
    qint64 total = -1;

    /// The one ending, or what is wrong with them.
    QString Told() const
    {
        if (progressFell)
            return QStringLiteral("progress fell");
        return endings.size() == 1 ? endings[0] : QStringLiteral("endings: ") + endings.join(QStringLiteral(", "));
    }
};

/// One request, as seen by who made it: waited for until the service has deleted the callback.
template <typename T>
class CCloudRequest {
public:
    /// `ask` hands the callback to the service.
    template <typename Ask>
    static CCloudRequest Make(Ask ask)
    {
        CCloudRequest request;
        ask(new CCallback(request.m_state));
        return request;
    }

    /// Does not give up before a generous time has passed.
    COutcome<T> Wait() const
    {
        std::unique_lock<std::mutex> lock(m_state->mutex);
        m_state->changed.wait_for(lock, std::chrono::seconds(60), [this] { return m_state->deleted; });
        return m_state->outcome;
    }

    bool HasEnded() const
    {
        const std::lock_guard<std::mutex> lock(m_state->mutex);
        return m_state->deleted;
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable changed;
        COutcome<T> outcome;
        bool deleted = false;
    };

    class CCallback : public NUVSCallback<T> {
    public:
        explicit CCallback(const std::shared_ptr<State>& state) : m_state(state) {}
        ~CCallback() override
        {
            const std::lock_guard<std::mutex> lock(m_state->mutex);
            m_state->deleted = true;
            m_state->changed.notify_all();
        }

        void onFinished(T result) override
        {
            End(result.code.isEmpty() ? QStringLiteral("done") : result.code);
            const std::lock_guard<std::mutex> lock(m_state->mutex);
            m_state->outcome.result = result;
        }
        void onTimeOut() override { End(QStringLiteral("time-out")); }
        void onError(QNetworkReply::NetworkError error) override
        {
            End(QStringLiteral("error"));
            const std::lock_guard<std::mutex> lock(m_state->mutex);
            m_state->outcome.error = error;
        }
        void onDownloadProgress(qint64 received, qint64 total) override { Progress(received, total); }
        void onUploadProgress(qint64 sent, qint64 total) override { Progress(sent, total); }

    private:
        void End(const QString& ending)
        {
            const std::lock_guard<std::mutex> lock(m_state->mutex);
            m_state->outcome.endings.append(ending);
        }
        void Progress(qint64 done, qint64 total)
        {
            const std::lock_guard<std::mutex> lock(m_state->mutex);
            COutcome<T>& outcome = m_state->outcome;
            outcome.progressFell = outcome.progressFell || done < outcome.progress || total < outcome.total;
            outcome.progress = done;
            outcome.total = total;
        }

        std::shared_ptr<State> m_state;
    };

    std::shared_ptr<State> m_state = std::make_shared<State>();
};

/// Where an account lies.
struct CCloudAccount {
    QString user;
    QString password;
    QString address;
    QString product = QStringLiteral("KIV");
};

/// Makes the process trust what these certificates (PEM) vouch for, and nobody else.
void trustOnly(const QByteArray& certificates);

/// The service's operations, begun and not waited for.
namespace CloudRequests {

CCloudRequest<NUVSLoginInfo> Login(const CCloudAccount& account);
CCloudRequest<NUVSLogoutInfo> Logout();
CCloudRequest<NUVSCloudChildren> Children(const QString& folderId = {});
CCloudRequest<NUVSCloudCreateFolder> CreateFolder(const QString& name, const QString& parentId = {});
CCloudRequest<NUVSCloudUploadFile> Upload(const QString& folderId, const QString& localPath);
CCloudRequest<NUVSBaseInfo> Download(const QString& fileId, const QString& localPath);
CCloudRequest<NUVSCloudDelFile> Delete(const QString& id);

}  // namespace CloudRequests
