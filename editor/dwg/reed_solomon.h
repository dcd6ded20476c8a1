#pragma once

#include "editor/dwg/source.h"

namespace dwg {

/// The 2007 container protects its pages by code words of 255 bytes: data, then parity.
constexpr std::size_t codeWordLength = 255;
/// Data bytes of a code word in the file header, page map and section map.
constexpr std::size_t systemDataLength = 239;
/// Data bytes of a code word in the pages of sections.
constexpr std::size_t pageDataLength = 251;

/// Takes the data bytes out of code words that are interleaved: byte i of word w lies at i * words + w. Parity is
/// left out and nothing is corrected. `coded` must hold words * 255 bytes, else `truncated`.
Result<Bytes> deinterleave(ByteView coded, std::size_t words, std::size_t dataLength);

/// Code words for data, interleaved. The data is filled up with zeros to `words` words; `dataLength` is one of the two
/// above.
Bytes interleave(ByteView data, std::size_t words, std::size_t dataLength);

/// The parity alone of words of 251 data bytes, word by word, the last one filled up with zeros: what lies behind the
/// data of a page that isn't interleaved.
Bytes pageParity(ByteView data);

} // namespace dwg
