#pragma once

#include "tests/catalogue/Support.h"
#include "tests/support/TemporaryFolder.h"

#include "tessaro/catalogue/Directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace catalogue_tests {

/// A settings file in a folder of its own, which LoadIni and SaveIni use.
class SettingsTest : public testing::Test {
protected:
    SettingsTest();

    void Disk(const std::string& text) { folder.write("tessaro35.ini", text); }
    std::string Disk() const { return tests::readFile(folder.path() / "tessaro35.ini"); }
    /// The lines of a section on disk, without their ends.
    std::vector<std::string> Section(const std::string& name) const;
    /// The value of a key on disk; "absent" without one.
    std::string Value(const std::string& section, const std::string& key) const;
    /// Loads a file of that text.
    void Load(const std::string& text);
    /// Loads one Directory "/d" with these lines in its section.
    const Directory& LoadDirectory(const std::string& lines);
    std::vector<std::wstring> Paths() const;

    const CleanState clean;
    const tests::TemporaryFolder folder;
};

} // namespace catalogue_tests
