// Qt is not built with the thread sanitizer, which so knows nothing of its locks and reports everything that they
// guard. In builds with it, the calls of our own code pass here and tell.
#include <QMutex>
#include <QReadWriteLock>
#include <QThread>
#include <QWaitCondition>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#include <climits>
#include <set>

namespace {

// What Qt itself has under the name of the linker.
template <typename Answer, typename... Arguments>
Answer callQt(const char* name, Arguments... arguments)
{
    using Function = Answer (*)(Arguments...);
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name))(arguments...);
}

bool acquired(void* lock, bool isHeld)
{
    if (isHeld)
        __tsan_acquire(lock);
    return isHeld;
}

// Readers see what writers did and writers what both did, but no reader what another did.
void* readersOf(QReadWriteLock* lock)
{
    return reinterpret_cast<char*>(lock) + 1;
}

// What this thread holds for writing, which unlocking does not tell.
thread_local std::set<QReadWriteLock*> s_written;

bool acquiredForWriting(QReadWriteLock* lock, bool isHeld)
{
    if (isHeld)
        s_written.insert(lock);
    return acquired(lock, isHeld) && acquired(readersOf(lock), isHeld);
}

void release(QReadWriteLock* lock)
{
    __tsan_release(s_written.erase(lock) > 0 ? lock : readersOf(lock));
}

void release(QMutex* mutex)
{
    __tsan_release(mutex);
}

bool waitForMutex(const char* name, QWaitCondition* condition, QMutex* mutex, QDeadlineTimer deadline)
{
    release(mutex);
    const bool isWoken = callQt<bool>(name, condition, mutex, deadline);
    return acquired(mutex, true) && isWoken;
}

bool waitForLock(const char* name, QWaitCondition* condition, QReadWriteLock* lock, QDeadlineTimer deadline)
{
    const bool isWriting = s_written.count(lock) > 0;
    release(lock);
    const bool isWoken = callQt<bool>(name, condition, lock, deadline);
    return (isWriting ? acquiredForWriting(lock, true) : acquired(lock, true)) && isWoken;
}

}  // namespace

void QReadWriteLock::lockForRead()
{
    callQt<void>("_ZN14QReadWriteLock11lockForReadEv", this);
    acquired(this, true);
}

void QReadWriteLock::lockForWrite()
{
    callQt<void>("_ZN14QReadWriteLock12lockForWriteEv", this);
    acquiredForWriting(this, true);
}

bool QReadWriteLock::tryLockForRead()
{
    return acquired(this, callQt<bool>("_ZN14QReadWriteLock14tryLockForReadEv", this));
}

bool QReadWriteLock::tryLockForWrite()
{
    return acquiredForWriting(this, callQt<bool>("_ZN14QReadWriteLock15tryLockForWriteEv", this));
}

void QReadWriteLock::unlock()
{
    release(this);
    callQt<void>("_ZN14QReadWriteLock6unlockEv", this);
}

void QMutex::lock()
{
    callQt<void>("_ZN6QMutex4lockEv", this);
    acquired(this, true);
}

bool QMutex::tryLock(int timeout)
{
    return acquired(this, callQt<bool>("_ZN6QMutex7tryLockEi", this, timeout));
}

void QMutex::unlock()
{
    release(this);
    callQt<void>("_ZN6QMutex6unlockEv", this);
}

bool QWaitCondition::wait(QReadWriteLock* lock, QDeadlineTimer deadline)
{
    return waitForLock("_ZN14QWaitCondition4waitEP14QReadWriteLock14QDeadlineTimer", this, lock, deadline);
}

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer deadline)
{
    return waitForMutex("_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer", this, mutex, deadline);
}

bool QWaitCondition::wait(QReadWriteLock* lock, unsigned long time)
{
    return wait(lock, time == ULONG_MAX ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(qint64(time)));
}

bool QWaitCondition::wait(QMutex* mutex, unsigned long time)
{
    return wait(mutex, time == ULONG_MAX ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(qint64(time)));
}

void QThread::start(Priority priority)
{
    // Without a receiver: runs on the thread that ends.
    connect(this, &QThread::finished, [this] { __tsan_release(this); });
    callQt<void>("_ZN7QThread5startENS_8PriorityE", this, priority);
}

bool QThread::wait(unsigned long time)
{
    return acquired(this, callQt<bool>("_ZN7QThread4waitEm", this, time));
}

bool QThread::wait(QDeadlineTimer deadline)
{
    return acquired(this, callQt<bool>("_ZN7QThread4waitE14QDeadlineTimer", this, deadline));
}
