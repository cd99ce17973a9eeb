#include <condition_variable>
#include <mutex>

#include "foundation/foundation.h"

// std::thread starts at once, so the thread waits at a gate until the first
// resume. A running thread can't be held again: suspend only marks it.
struct WorkerThread::Gate {
    std::mutex mutex;
    std::condition_variable opened;
    bool open = false;
};

WorkerThread::WorkerThread(Routine threadRoutine) : gate(new Gate), routine(threadRoutine) {
    try {
        handle = std::thread([gate = gate, threadRoutine] {
            {
                std::unique_lock<std::mutex> lock(gate->mutex);
                gate->opened.wait(lock, [gate] { return gate->open; });
            }
            if (threadRoutine) threadRoutine(nullptr);
        });
    } catch (const std::system_error&) {
        // No thread: resume and the destructor have nothing to act on.
    }
}

// Leaves no name in the location trace, which the ending routine may be
// writing to at this moment.
WorkerThread::~WorkerThread() {
    if (handle.joinable()) {
        openGate();
        handle.join();
    }
    delete gate;
}

void WorkerThread::openGate() {
    {
        std::lock_guard<std::mutex> lock(gate->mutex);
        gate->open = true;
    }
    gate->opened.notify_one();
}

void WorkerThread::resume() {
    TRACE_LOCATION("WorkerThread::resume");
    if (!handle.joinable() || !routine || suspended != 1) return;
    suspended = 0;
    openGate();
}

void WorkerThread::suspend() {
    TRACE_LOCATION("WorkerThread::suspend");
    if (!handle.joinable() || !routine || suspended != 0) return;
    suspended = 1;
}

void WorkerThread::setPriority(int newPriority) {
    TRACE_LOCATION("WorkerThread::setPriority");
    if (newPriority < -2 || newPriority > 2 || !handle.joinable()) return;
    priority = newPriority;
}
