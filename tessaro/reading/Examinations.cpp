#include "tessaro/reading/Examinations.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/reading/BlockRows.h"
#include "tessaro/reading/Loader.h"

namespace {

/// Of a Directory that nobody looks at. Their pictures wait in memory, some 8 kB a Block.
constexpr std::size_t kMostAtOnce = 64;

} // namespace

bool Examinations::Full() const {
    return waiting.size() >= (IsShown(directory) ? 1 : kMostAtOnce);
}

void Examinations::Add(Block& block) {
    waiting.push_back({block, TaskFor(directory, block), {}});
}

void Examinations::Run() {
    for (Entry& entry : waiting) {
        if (loader.pause >= 1)
            return;
        if (entry.examined)
            continue;
        try {
            Examine(entry.task, entry.found);
        } catch (...) {
            platform::CallOnMainThread([&] { ApplyUnfinished(entry); });
            throw;
        }
        entry.examined = true;
    }
}

bool Examinations::Apply() {
    if (waiting.empty() || !waiting.front().examined)
        return true;
    const AttachedImagesScope attached(directory);
    for (; !waiting.empty() && waiting.front().examined; waiting.pop_front()) {
        const auto& [block, task, found, examined] = waiting.front();
        if (found.pictures && !directory.imagesLoaded && !IsShown(directory))
            return false;
        ApplyExamination(directory, block, found);
        directory.dirty = true;
        block.checked = block.cached = true;
        block.cachedStatus = block.status;
    }
    return true;
}

void Examinations::ApplyUnfinished(Entry& entry) {
    Apply();
    const AttachedImagesScope attached(directory);
    ApplyExamination(directory, entry.block, entry.found);
}
