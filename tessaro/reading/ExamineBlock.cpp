#include "tessaro/reading/ExamineBlock.h"

#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/ShownImages.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/reading/BlockRows.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/Examination.h"

namespace {

void Apply(Directory& directory, Block& block, const Examination& found) {
    const AttachedImagesScope attached(directory);
    ApplyExamination(directory, block, found);
}

} // namespace

void ExamineBlock(Directory& directory, Block& block) {
    ExaminationTask task;
    platform::CallOnMainThread([&] { task = TaskFor(directory, block); });
    Examination found;
    try {
        Examine(task, found);
    } catch (...) {
        platform::CallOnMainThread([&] { Apply(directory, block, found); });
        throw;
    }
    const auto take = [&] {
        // It was left meanwhile with its pictures in its file only: the new one joins them.
        if (found.pictures && !directory.imagesLoaded && !IsShown(directory))
            return false;
        Apply(directory, block, found);
        directory.dirty = true;
        block.checked = block.cached = true;
        block.cachedStatus = block.status;
        return true;
    };
    for (bool taken = false; !taken;) {
        platform::CallOnMainThread([&] { taken = take(); });
        if (!taken)
            LoadDirCache(directory);
    }
}
