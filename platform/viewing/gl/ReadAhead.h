#pragma once

#include <QMutex>
#include <QRunnable>
#include <QThreadPool>

#include <functional>
#include <utility>
#include <vector>

namespace kiv {

/// Makes things for the frames to come in threads of its own.
template <typename Result>
class CReadAhead {
public:
    /// `arrived` is called by the threads, after a result can be taken.
    CReadAhead(int threads, std::function<void()> arrived) : m_arrived(std::move(arrived))
    {
        m_pool.setMaxThreadCount(threads);
    }
    ~CReadAhead() { Cancel(); }
    CReadAhead(const CReadAhead&) = delete;
    CReadAhead& operator=(const CReadAhead&) = delete;

    /// `work` throws nothing.
    void Start(std::function<Result()> work)
    {
        m_pool.start(new CJob([this, work = std::move(work)] {
            Result result = work();
            {
                const QMutexLocker locker(&m_mutex);
                m_results.push_back(std::move(result));
            }
            m_arrived();
        }));
    }

    std::vector<Result> Take()
    {
        const QMutexLocker locker(&m_mutex);
        return std::exchange(m_results, {});
    }

    void Wait() { m_pool.waitForDone(); }

    /// What was started comes no more.
    void Cancel()
    {
        m_pool.clear();
        m_pool.waitForDone();
        Take();
    }

private:
    class CJob : public QRunnable {
    public:
        explicit CJob(std::function<void()> work) : m_work(std::move(work)) {}
        void run() override { m_work(); }

    private:
        std::function<void()> m_work;
    };

    std::function<void()> m_arrived;
    QMutex m_mutex;
    std::vector<Result> m_results;  // by the threads
    QThreadPool m_pool;             // last: waits for its threads before the rest goes
};

}  // namespace kiv
