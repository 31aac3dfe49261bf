#pragma once

#include <algorithm>
#include <atomic>
#include <future>
#include <system_error>
#include <thread>
#include <vector>

namespace kiv {

/// Calls work(0) ... work(count - 1) on as many threads as there are cores, the caller's among them, and returns when
/// all are done. What `work` throws is thrown on, once every thread has stopped.
template <typename Work>
void ParallelFor(int count, const Work& work)
{
    std::atomic<int> next{0};
    const auto run = [&] {
        for (int i = next++; i < count; i = next++)
            work(i);
    };
    std::vector<std::future<void>> helpers;
    try {
        const int threads = std::min(count, static_cast<int>(std::thread::hardware_concurrency()));
        for (int i = 1; i < threads; ++i)
            helpers.push_back(std::async(std::launch::async, run));
    } catch (const std::system_error&) {
        // No more threads to be had: those that there are do the work.
    }
    run();
    for (std::future<void>& helper : helpers)
        helper.get();
}

}  // namespace kiv
