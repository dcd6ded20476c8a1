#pragma once

#include <atomic>
#include <functional>

/// What the threads of an opening know of each other.
struct LoaderThreads {
    std::atomic<bool> workerRuns{false};
    std::atomic<bool> open{false};    ///< from the start of a worker to the end of its finisher
    std::atomic<bool> closing{false}; ///< a finisher has that worker's end before it
    std::atomic<int> deletes{0};      ///< delete threads that are not done
};
extern LoaderThreads& loaderThreads;

/// Starts a thread that nothing joins. An exception ends it with a line in the log.
void StartThread(const wchar_t* name, std::function<void()> body);

/// Writes the line of an exception that ended a thread's work.
void LogException(const wchar_t* where, const char* what);
