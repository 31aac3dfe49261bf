#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <condition_variable>
#include <functional>
#include <limits>
#include <mutex>
#include <optional>

/// What a server does in place of its duty.
struct CFault {
    enum Kind {
        Status,       ///< answers `status`, with `text` as the body
        Hang,         ///< reads no body and does nothing until the script goes on; then closes
        HangInBody,   ///< sends half of the honest answer's body, the rest when the script goes on
        Close,        ///< closes the connection; nothing is done
        CloseAfter,   ///< does its duty, and closes the connection without an answer
        CutBody,      ///< closes the connection after half of the honest answer's body
        Body,         ///< 207 with `text` as the body
        HugeBody,     ///< 207 with a well-formed listing of 100 MB
        Redirect,     ///< 302 to `text`
        LongLength,   ///< announces more than it sends and closes
        ShortLength,  ///< announces half of what it sends
        IgnoreRange,  ///< sends the whole file where a part was asked for
        WrongRange,   ///< says and sends another part of the file than the one asked for
        Trickle,      ///< sends the answer's body in many pieces, a while after another
        OtherStatus,  ///< does its duty, and answers `status`
        Chunked,      ///< sends the answer's body without telling its length
        Endless,      ///< again and again
        Entry,        ///< lists one more file, `text` being its address
    };
    Kind kind = Status;
    QByteArray method = {};  ///< empty: any
    QString path = {};       ///< which requests: those whose decoded path contains it
    int status = 500;
    QByteArray text = {};
    int skip = 0;                                 ///< requests that are served before
    int times = std::numeric_limits<int>::max();  ///< requests that are not
    std::function<void()> done = {};              ///< called on the server's thread when it has happened
};

struct CRequestRecord {
    QByteArray method;
    QString path;
    int status = 0;           ///< 0: no answer
    bool authorized = false;  ///< it carried an Authorization header
    QByteArray range;
};

/// What a fault server is told and has seen. Any thread.
class CFaultScript {
public:
    void Add(const CFault& fault);
    /// Forgets the faults; what hangs does its duty.
    void Clear();
    /// Clear(), and what hangs from now on goes on at once.
    void Stop();
    QVector<CRequestRecord> TakeLog();
    /// Waits until so many requests of the method (empty: of any) came since the log was taken; false when they did not
    /// within a generous time.
    bool WaitForRequests(int count, const QByteArray& method = {});

    /// The fault that this request gets.
    std::optional<CFault> Take(const QByteArray& method, const QString& path);
    /// Counted when its head was read; tells its answer with Finish().
    int Begin(const CRequestRecord& record);
    void Finish(int request, int status);
    void WaitToGoOn();
    /// A pause of a server that is slow; false when it need not go on.
    bool Pause();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    QVector<CFault> m_faults;
    QVector<CRequestRecord> m_log;
    int m_taken = 0;  // requests whose records were given out
    int m_cleared = 0;
    bool m_stopped = false;
};
