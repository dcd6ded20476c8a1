#pragma once

#include "editor/dwg/source.h"
#include "editor/dwg/version.h"

#include <string>
#include <utility>
#include <vector>

namespace tests {

/// A section of a file to be built: its name and its bytes.
using NamedBytes = std::pair<std::string, dwg::Bytes>;

/// Numbers in the order of little-endian files.
void append16(dwg::Bytes& out, std::uint32_t value);
void append32(dwg::Bytes& out, std::uint32_t value);
void append64(dwg::Bytes& out, std::uint64_t value);
void append(dwg::Bytes& out, dwg::ByteView bytes);

/// The first 0x80 bytes that all containers share.
dwg::Bytes fileHead(dwg::Release release, std::uint32_t imageAddress = 0);

/// A flat file: records by number, each with its bytes.
dwg::Bytes buildFlatFile(dwg::Release release, const std::vector<std::pair<std::uint8_t, dwg::Bytes>>& records);

/// A paged file of 2004, 2010, 2013 or 2018, packed as literals only, in pages of 0x7400 bytes. As
/// real writers do, it leaves out the pages of a section that is all zeros.
dwg::Bytes buildPagedFile(dwg::Release release, const std::vector<NamedBytes>& sections);

/// A file of 2007, nothing in it packed, without parity.
dwg::Bytes buildFile2007(const std::vector<NamedBytes>& sections);

/// Content between guards, with length, the place of the references (from 2007 on, in bits) and the check.
dwg::Bytes guarded(dwg::Release release, const dwg::Bytes& content, std::size_t referencesAtBit = 0);

} // namespace tests
