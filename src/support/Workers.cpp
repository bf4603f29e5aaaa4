// The threads stay for the next work, and wait meanwhile: to make one takes as long as a flush.
#include "support/Workers.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

namespace {

struct Pool {
    std::mutex Guard; ///< protects all
    std::condition_variable Called, Ended;
    const std::function<void()>* Work = nullptr;
    int Threads = 0; ///< all that there are
    int Wanted = 0;  ///< how many are still to take the work up
    int Busy = 0;
};

void WorkFor(Pool& pool) {
    std::unique_lock lock(pool.Guard);
    for (;;) {
        pool.Called.wait(lock, [&] { return pool.Wanted > 0; });
        --pool.Wanted;
        ++pool.Busy;
        const std::function<void()>& work = *pool.Work;
        lock.unlock();
        work();
        lock.lock();
        --pool.Busy;
        pool.Ended.notify_one();
    }
}

/// Without an end: the threads wait in it while the program ends.
Pool& ThePool() {
    static Pool& pool = *new Pool;
    return pool;
}

} // namespace

void RunSideBySide(int intThreads, const std::function<void()>& work) {
    Pool& pool = ThePool();
    const int others = std::min(intThreads, intMostWorkers) - 1;
    {
        const std::scoped_lock lock(pool.Guard);
        try {
            for (; pool.Threads < others; ++pool.Threads)
                std::thread(WorkFor, std::ref(pool)).detach();
        } catch (const std::system_error&) { // fewer, then
        }
        pool.Work = &work;
        pool.Wanted = std::min(others, pool.Threads);
    }
    if (others > 0)
        pool.Called.notify_all();
    work();
    std::unique_lock lock(pool.Guard);
    pool.Wanted = 0; // who has not begun yet would find nothing left to do
    pool.Ended.wait(lock, [&] { return pool.Busy == 0; });
}
