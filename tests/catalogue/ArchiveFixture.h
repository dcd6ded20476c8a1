#pragma once

#include "tests/catalogue/Support.h"
#include "tests/catalogue/Told.h"
#include "tests/support/TemporaryFolder.h"

#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/SafeFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

namespace catalogue_tests {

/// Bytes from hexadecimal digits; blanks and line ends are left out, what stands between bars is text, and between
/// quotes text in units of sixteen bits.
std::string Hex(std::string_view digits);
/// The same bytes as digits, for messages of tests.
std::string Digits(std::string_view bytes);
/// A container of these parts; the checksum is the right one unless given.
std::string Container(const std::string& packed, std::uint32_t plainLength, int kind = 1);
std::string Container(const std::string& packed, std::uint32_t plainLength, int kind, std::uint32_t checksum);
/// A zlib stream as `compress` makes it.
std::string Packed(const std::string& plain);
/// The container of a plain stream.
std::string Container(const std::string& plain);
/// The plain stream of a container; a failure where it is none.
std::string Unpacked(const std::string& container);

/// Archives over a file of its own.
class ArchiveTest : public testing::Test {
protected:
    using Work = std::function<void(CArchiveExt&)>;

    std::wstring Path() const { return Wide(folder.path() / "stream"); }
    /// What the work leaves on disk.
    std::string Stored(const Work& work, bool compress = false, const std::wstring& password = L"") const;
    /// Has a file of these bytes loaded.
    void Load(const std::string& bytes, const Work& work, bool compress = false,
              const std::wstring& password = L"") const;
    std::string Disk() const { return tests::readFile(folder.path() / "stream"); }
    /// The cause of the ArchiveException that the work ends in; -1 without one.
    static int Cause(const std::function<void()>& work);

    const CleanState clean;
    const tests::TemporaryFolder folder;
    Told told;
};

} // namespace catalogue_tests
