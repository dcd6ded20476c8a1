#pragma once

#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/catalogue/ImageList.h"

/// What is left of an archive that loads, for the reader of picture lists.
class ArchivedBytes : public ByteSource {
public:
    explicit ArchivedBytes(CArchiveExt& read) : archive(read) {}
    std::span<const std::uint8_t> Take(std::size_t count) override { return archive.Take(count); }
    std::uint64_t AtMost() const override { return archive.AtMost(); }

private:
    CArchiveExt& archive;
};
