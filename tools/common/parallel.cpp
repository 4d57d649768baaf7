// SPDX-License-Identifier: MIT
#include "tools/common/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace {

struct Work
{
    ParallelJob& _job;
    const size_t _nItems;
    std::atomic<size_t> _next{0};
    std::mutex _guard;
    std::exception_ptr _problem; // the first one, if any

    void run();
};

void Work::run()
{
    try {
        for (size_t item = _next++; item < _nItems; item = _next++) {
            _job.run(item);
        }
    } catch (...) {
        const std::lock_guard<std::mutex> lock(_guard);
        _problem = _problem ? _problem : std::current_exception();
        _next = _nItems;
    }
}

} // namespace

void runParallel(ParallelJob& job, size_t nItems, unsigned int nThreads)
{
    Work work{job, nItems, {}, {}, {}};
    std::vector<std::thread> helpers;
    const size_t wanted = std::min<size_t>(std::max(nThreads, 1u), nItems);
    try {
        while (helpers.size() + 1 < wanted) {
            helpers.emplace_back([&work] { work.run(); });
        }
    } catch (const std::system_error&) {
        // No more threads to be had: those that run take all items.
    }
    work.run();
    for (std::thread& helper : helpers) {
        helper.join();
    }
    if (work._problem) {
        std::rethrow_exception(work._problem);
    }
}

unsigned int coreCount()
{
    return std::max(std::thread::hardware_concurrency(), 1u);
}
