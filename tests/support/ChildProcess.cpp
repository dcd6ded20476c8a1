#include "tests/support/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tests {
namespace {

struct FileCall {
    long number;
    const char* name;
};

constexpr FileCall kFileCalls[] = {
#ifdef SYS_open
    {SYS_open, "open"},           {SYS_creat, "creat"},         {SYS_link, "link"},     {SYS_rename, "rename"},
    {SYS_unlink, "unlink"},       {SYS_chmod, "chmod"},         {SYS_chown, "chown"},
#endif
    {SYS_openat, "openat"},       {SYS_write, "write"},         {SYS_writev, "writev"}, {SYS_pwrite64, "pwrite"},
    {SYS_ftruncate, "ftruncate"}, {SYS_fallocate, "fallocate"}, {SYS_linkat, "linkat"}, {SYS_renameat, "renameat"},
    {SYS_renameat2, "renameat2"}, {SYS_unlinkat, "unlinkat"},   {SYS_fchmod, "fchmod"}, {SYS_fchown, "fchown"},
    {SYS_fsync, "fsync"},         {SYS_fdatasync, "fdatasync"},
};

const char* nameOf(std::uint64_t call) {
    for (const FileCall& known : kFileCalls)
        if (static_cast<std::uint64_t>(known.number) == call)
            return known.name;
    return nullptr;
}

int waitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

void kill(pid_t child) {
    ::kill(child, SIGKILL);
    waitFor(child);
}

/// The file call that the stopped child is about to make; null at any other stop.
const char* callAtStop(pid_t child, int status) {
    if (WSTOPSIG(status) != (SIGTRAP | 0x80))
        return nullptr;
    __ptrace_syscall_info info{};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) <= 0 || info.op != PTRACE_SYSCALL_INFO_ENTRY)
        return nullptr;
    return nameOf(info.entry.nr);
}

/// Runs the work in a child, and has the child that stands at its `number`th file call dealt with.
Killed stopAtFileCall(int number, const std::function<void()>& work, const std::function<void(pid_t)>& atCall) {
    constexpr int refused = 99;
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            _exit(refused);
        raise(SIGSTOP);
        work();
        _exit(0);
    }
    int status = waitFor(child);
    if (!WIFSTOPPED(status))
        return {false, "", true};
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL | PTRACE_O_TRACESYSGOOD);
    for (int seen = 0;;) {
        if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0) {
            kill(child);
            return {false, "", true};
        }
        status = waitFor(child);
        if (!WIFSTOPPED(status))
            return {WIFEXITED(status) && WEXITSTATUS(status) == 0, "end", false};
        const char* const call = callAtStop(child, status);
        if (call != nullptr && ++seen == number) {
            atCall(child);
            return {false, call, false};
        }
    }
}

} // namespace

int inChild(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    const int status = waitFor(child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

Killed killAtFileCall(int number, const std::function<void()>& work) {
    return stopAtFileCall(number, work, [](pid_t child) { kill(child); });
}

Killed holdAtFileCall(int number, const std::function<void()>& meanwhile, const std::function<void()>& work) {
    return stopAtFileCall(number, work, [&](pid_t child) {
        meanwhile();
        ptrace(PTRACE_DETACH, child, nullptr, nullptr);
        waitFor(child);
    });
}

void killAfter(std::chrono::microseconds time, const std::function<void(const std::function<void()>& begun)>& work) {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0)
        return;
    const pid_t child = fork();
    if (child == 0) {
        work([&] { [[maybe_unused]] const ssize_t told = write(pipe[1], "b", 1); });
        _exit(0);
    }
    close(pipe[1]);
    char begun = 0;
    while (read(pipe[0], &begun, 1) < 0 && errno == EINTR) {
    }
    close(pipe[0]);
    std::this_thread::sleep_for(time);
    kill(child);
}

bool mountSmallDisk(const std::filesystem::path& folder, std::size_t bytes) {
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        return false;
    return mount("tmpfs", folder.c_str(), "tmpfs", 0, ("size=" + std::to_string(bytes)).c_str()) == 0;
}

bool becomeNobody() {
    constexpr unsigned nobody = 65534;
    return setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0;
}

} // namespace tests
