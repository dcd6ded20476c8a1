// The stored forms of the two records.
#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/catalogue/DirCache.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <memory>

namespace {

constexpr std::int32_t kCachedMark = 1;
constexpr const wchar_t* kInternalName = L"Internal Blocks";

CArchiveExt& operator<<(CArchiveExt& archive, bool flag) {
    return archive << std::int32_t{flag};
}

void ReadFlag(CArchiveExt& archive, bool& flag) {
    std::int32_t value = 0;
    archive >> value;
    flag = value != 0;
}

void Store(CArchiveExt& archive, const Block& block) {
    // One that was not compared with its file is written back as it was read.
    const BlockStatus& seen = block.checked ? block.status : block.cachedStatus;
    archive << block.name << block.description << kCachedMark << seen.m_ctime << seen.m_mtime << seen.m_size
            << block.created << block.modified << block.imageIndex << block.fileType;
}

void Load(CArchiveExt& archive, Block& block) {
    archive >> block.name >> block.description;
    ReadFlag(archive, block.cached);
    archive >> block.cachedStatus.m_ctime >> block.cachedStatus.m_mtime >> block.cachedStatus.m_size >> block.created >>
        block.modified >> block.imageIndex >> block.fileType;
}

void Store(CArchiveExt& archive, const Directory& directory) {
    archive << directory.scaleMode << directory.rotationMode << directory.sortStyle << directory.rotationAngle
            << directory.explode << directory.multipleInsert << directory.repeat << directory.useCache
            << directory.showInsPts << directory.path << directory.description << directory.topIndex
            << directory.selectedIndex << directory.viewMode << directory.schemeName << directory.useLargeImages
            << directory.cacheFile << static_cast<std::uint32_t>(directory.blocks.size());
    for (Block* block : directory.blocks)
        block->Serialize(archive);
}

void Load(CArchiveExt& archive, Directory& directory) {
    archive >> directory.scaleMode >> directory.rotationMode >> directory.sortStyle >> directory.rotationAngle;
    ReadFlag(archive, directory.explode);
    ReadFlag(archive, directory.multipleInsert);
    ReadFlag(archive, directory.repeat);
    ReadFlag(archive, directory.useCache);
    ReadFlag(archive, directory.showInsPts);
    archive >> directory.path >> directory.description >> directory.topIndex >> directory.selectedIndex >>
        directory.viewMode >> directory.schemeName;
    ReadFlag(archive, directory.useLargeImages);
    std::uint32_t count = 0;
    archive >> directory.cacheFile >> count;
    for (; count > 0; --count) {
        directory.blocks.push_back(new Block);
        directory.blocks.back()->Serialize(archive);
    }
}

} // namespace

void Block::Serialize(CArchiveExt& archive) {
    if (archive.IsStoring())
        Store(archive, *this);
    else
        Load(archive, *this);
}

void Directory::Serialize(CArchiveExt& archive) {
    if (archive.IsStoring()) {
        Store(archive, *this);
        if (description == kInternalName && path == kInternalName)
            isInternal = true;
        return;
    }
    Load(archive, *this);
    if (demandLoadCache == 0)
        LoadDirCache(*this);
}
