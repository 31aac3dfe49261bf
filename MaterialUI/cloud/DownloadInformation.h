#pragma once

#include <QReadWriteLock>

/// How many downloads were asked for since the login, and how many of them ended. Any thread.
class CDownloadInformation {
public:
    struct Counts {
        int requested = 0;
        int ended = 0;
    };

    void Reset();
    void CountRequest();
    void CountEnd();
    Counts Get() const;

private:
    mutable QReadWriteLock m_lock;
    Counts m_counts;
};
