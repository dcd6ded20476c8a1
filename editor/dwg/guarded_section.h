#pragma once

#include "editor/dwg/bits.h"
#include "editor/dwg/drawing_file.h"

#include <optional>

/// The sections that lie between two guards of 16 bytes: header variables and classes. Length, from 2007 on the place
/// where the references begin, the data, a check.
namespace dwg {

/// A guarded section opened for reading. The readers point into `bytes`, so the object isn't copied.
struct GuardedSection {
    GuardedSection() = default;
    GuardedSection(GuardedSection&&) = default;
    GuardedSection& operator=(GuardedSection&&) = default;

    Bytes bytes;
    /// Up to 2004 all three read the same run of bits: only `data` is used there.
    BitReader data;
    BitReader text;
    BitReader handles;
    /// From 2007 on: where the texts begin, which the data doesn't reach.
    std::size_t textsAt = 0;
};

/// Opens a section as stored. Guards and checks that don't match are findings; a length beyond the section is an error.
Result<GuardedSection> openGuardedSection(Bytes bytes, Release release, std::uint8_t maintenance, const char* name,
                                          Findings* findings);

/// Whether the length of guarded sections has a second half.
constexpr bool hasWideLength(Release release, std::uint8_t maintenance) {
    return release >= Release::r2018 || (release >= Release::r2010 && maintenance > 3);
}

/// What is written between the guards, in three parts as it is read: up to 2004 the data alone holds everything.
struct GuardedContent {
    BitWriter data, texts, handles;

    /// The content as the release stores it, from 2007 on with the place of the references ahead.
    Bytes bytes(Release release) const;
};

} // namespace dwg
