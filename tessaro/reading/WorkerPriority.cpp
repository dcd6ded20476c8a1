#include "tessaro/reading/WorkerPriority.h"

#include <pthread.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// From the kernel's interface: no header of the C library has them.
constexpr int kIoWhoProcess = 1;
constexpr int kIoClassShift = 13;
constexpr int kIoClassNone = 0;
constexpr int kIoClassIdle = 3;

} // namespace

void SetWorkerPriority(WorkerPriority priority) {
    thread_local WorkerPriority present = WorkerPriority::Normal;
    if (priority == present)
        return;
    present = priority;
    const bool lowest = priority == WorkerPriority::Lowest;
    const sched_param parameters{};
    pthread_setschedparam(pthread_self(), lowest ? SCHED_BATCH : SCHED_OTHER, &parameters);
    syscall(SYS_ioprio_set, kIoWhoProcess, 0, (lowest ? kIoClassIdle : kIoClassNone) << kIoClassShift);
}
