#pragma once

#include "tessaro/reading/Examine.h"
#include "tests/reading/DrawingBuilder.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/TemporaryFolder.h"

namespace tests {

/// A Directory over a temporary folder with one Block, "a".
class ExamineFixture : public HelperFixture {
protected:
    ExamineFixture();

    TemporaryFolder folder;
    Directory directory;
    Block block;

    /// Writes "a.dwg" and examines it.
    bool examine(const std::string& drawing);
    bool examine();
    bool hasPicture() const { return block.imageIndex != 0; }
    /// Colour in the middle of the stored large picture, red in the low byte.
    std::uint32_t middle() const;
};

} // namespace tests
