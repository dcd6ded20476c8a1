#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace tests {

/// Runs the work in a forked child; its exit status, or -1 where a signal ended it. The child runs no destructors.
int inChild(const std::function<int()>& work);

/// How a child ended that was to be killed.
struct Killed {
    bool done = false;    ///< the work was finished before
    std::string at;       ///< the system call that was not carried out any more
    bool refused = false; ///< this system lets no process watch its child
};
/// Runs the work in a child and kills it (SIGKILL) at its `number`th call, from 1, that changes or opens a file: open,
/// write, truncate, link, rename, unlink, change of rights or owner, flush.
Killed killAtFileCall(int number, const std::function<void()>& work);

/// Runs the work in a child and holds it at its `number`th such call, from 1, until this process has carried
/// `meanwhile` out; then lets it go on to its end. `done` where the work has fewer calls, which `meanwhile` then never
/// saw.
Killed holdAtFileCall(int number, const std::function<void()>& meanwhile, const std::function<void()>& work);

/// Runs the endless work in a child and kills it (SIGKILL) that long after it said that it is under way by calling
/// `begun`.
void killAfter(std::chrono::microseconds time, const std::function<void(const std::function<void()>& begun)>& work);

/// In a child only: puts a new memory disk of that size over the folder, seen by this process alone. False where the
/// system does not permit it.
bool mountSmallDisk(const std::filesystem::path& folder, std::size_t bytes);

/// In a child only: goes on as a user without rights of its own. False where the process has no right to do so.
bool becomeNobody();

} // namespace tests
