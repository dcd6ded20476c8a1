#include "tests/faults/preload/FaultState.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

namespace faults {
namespace {

struct Armed {
    std::array<char, PATH_MAX> folder{};
    std::size_t folderLength = 0;
    FaultOrder order;
    std::atomic<bool> files{false};
    std::atomic<long> seen{0}, failed{0};
    std::array<char, sizeof FaultCount::call> call{};
};

Armed armed;

/// The thread whose allocations are counted. Reached without an allocation of its own.
__attribute__((tls_model("initial-exec"))) thread_local bool countsAllocations = false;

bool IsBelow(const char* path) {
    const char* const folder = armed.folder.data();
    return std::strncmp(path, folder, armed.folderLength) == 0 &&
           (path[armed.folderLength] == '\0' || path[armed.folderLength] == '/');
}

/// Whether this one is not carried out as it should.
bool IsTheOne(const char* call) {
    const long number = ++armed.seen;
    const FaultOrder& order = armed.order;
    if (order.number == 0 || number < order.number || (number > order.number && !order.stays))
        return false;
    if (armed.failed++ == 0)
        std::strncpy(armed.call.data(), call, armed.call.size() - 1);
    if (order.error != 0)
        errno = order.error;
    return true;
}

} // namespace

bool Watches(const char* path) {
    return armed.files && path != nullptr && IsBelow(path);
}

bool Watches(int descriptor) {
    if (!armed.files || descriptor < 0)
        return false;
    std::array<char, 32> link{"/proc/self/fd/"};
    std::to_chars(link.data() + std::strlen(link.data()), link.data() + link.size() - 1, descriptor);
    std::array<char, PATH_MAX> path{};
    const int before = errno;
    const long length = syscall(SYS_readlink, link.data(), path.data(), path.size() - 1);
    errno = before;
    return length > 0 && IsBelow(path.data());
}

bool Watches(int folder, const char* path) {
    if (path == nullptr || !armed.files)
        return false;
    return path[0] == '/' ? IsBelow(path) : folder != AT_FDCWD && Watches(folder);
}

Fate DecideTransfer(const char* call) {
    if (!IsTheOne(call))
        return Fate::goesOn;
    return armed.order.error == 0 ? Fate::isHalved : Fate::fails;
}

bool Fails(const char* call) {
    return !armed.order.onlyTransfers && IsTheOne(call);
}

bool AllocationFails() {
    if (!countsAllocations)
        return false;
    countsAllocations = false;
    const bool fails = IsTheOne("an allocation");
    countsAllocations = true;
    return fails;
}

bool CutsWaitsShort() {
    return armed.files;
}

} // namespace faults

extern "C" {

__attribute__((visibility("default"))) FaultsArm tessaro_faults_arm;
__attribute__((visibility("default"))) FaultsDisarm tessaro_faults_disarm;

void tessaro_faults_arm(const char* folder, const FaultOrder* order) {
    using namespace faults;
    armed.folderLength = std::min(std::strlen(folder), armed.folder.size() - 1);
    std::memcpy(armed.folder.data(), folder, armed.folderLength);
    armed.folder[armed.folderLength] = '\0';
    armed.order = *order;
    armed.seen = armed.failed = 0;
    armed.call.fill('\0');
    if (order->kind == FaultOrder::allocation)
        countsAllocations = true;
    else
        armed.files = true;
}

void tessaro_faults_disarm(FaultCount* count) {
    using namespace faults;
    countsAllocations = false;
    armed.files = false;
    count->seen = armed.seen;
    count->failed = armed.failed;
    std::memcpy(count->call, armed.call.data(), sizeof count->call);
}

} // extern "C"
