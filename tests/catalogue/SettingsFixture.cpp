#include "tests/catalogue/SettingsFixture.h"

#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tests/catalogue/WindowRecorder.h"

#include <sstream>

namespace catalogue_tests {

int WindowRecorder::Untouched() {
    ADD_FAILURE() << "the settings touch the two lists' fillings only";
    return 0;
}

SettingsTest::SettingsTest() {
    iniPath = Wide(folder.path() / "tessaro35.ini");
    cachePath = Wide(folder.path() / "tessaro35.cache");
}

std::vector<std::string> SettingsTest::Section(const std::string& name) const {
    std::istringstream in(Disk());
    std::vector<std::string> lines;
    bool inside = false;
    for (std::string line; std::getline(in, line);) {
        EXPECT_TRUE(line.ends_with('\r')) << line;
        line.pop_back();
        if (line.starts_with("["))
            inside = line == "[" + name + "]";
        else if (inside)
            lines.push_back(line);
    }
    return lines;
}

std::string SettingsTest::Value(const std::string& section, const std::string& key) const {
    for (const std::string& line : Section(section)) {
        if (line == key)
            return "";
        if (line.starts_with(key + "="))
            return line.substr(key.size() + 1);
    }
    return "absent";
}

void SettingsTest::Load(const std::string& text) {
    Disk(text);
    LoadIni();
}

const Directory& SettingsTest::LoadDirectory(const std::string& lines) {
    for (Directory* directory : directories)
        delete directory;
    directories.clear();
    Load("[Paths]\nNumPaths=1\nPath1=/d\n[/d]\n" + lines);
    EXPECT_EQ(directories.size(), 1u);
    return *directories.front();
}

std::vector<std::wstring> SettingsTest::Paths() const {
    std::vector<std::wstring> paths;
    for (const Directory* directory : directories)
        paths.push_back(directory->path);
    return paths;
}

} // namespace catalogue_tests
