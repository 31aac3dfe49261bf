#include "FaultScript.h"

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::seconds Patience(30);
constexpr std::chrono::milliseconds Slowness(100);

}  // namespace

void CFaultScript::Add(const CFault& fault)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_faults.append(fault);
}

void CFaultScript::Clear()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_faults.clear();
    ++m_cleared;
    m_changed.notify_all();
}

void CFaultScript::Stop()
{
    Clear();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped = true;
    m_changed.notify_all();
}

QVector<CRequestRecord> CFaultScript::TakeLog()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QVector<CRequestRecord> log;
    log.swap(m_log);
    m_taken += log.size();
    return log;
}

bool CFaultScript::WaitForRequests(int count, const QByteArray& method)
{
    const auto isMeant = [&](const CRequestRecord& seen) { return method.isEmpty() || seen.method == method; };
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, Patience,
                              [&] { return std::count_if(m_log.cbegin(), m_log.cend(), isMeant) >= count; });
}

std::optional<CFault> CFaultScript::Take(const QByteArray& method, const QString& path)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (CFault& fault : m_faults) {
        const bool meant = (fault.method.isEmpty() || fault.method == method) && path.contains(fault.path);
        if (!meant || fault.times == 0)
            continue;
        if (fault.skip > 0) {
            --fault.skip;
            continue;
        }
        --fault.times;
        return fault;
    }
    return {};
}

int CFaultScript::Begin(const CRequestRecord& record)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_log.append(record);
    m_changed.notify_all();
    return m_taken + m_log.size() - 1;
}

void CFaultScript::Finish(int request, int status)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (request >= m_taken)
        m_log[request - m_taken].status = status;
}

void CFaultScript::WaitToGoOn()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const int cleared = m_cleared;
    m_changed.wait(lock, [&] { return m_stopped || m_cleared != cleared; });
}

bool CFaultScript::Pause()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return !m_changed.wait_for(lock, Slowness, [this] { return m_stopped; });
}
