#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>
#include <vector>

namespace tests {

/// The module, put into a folder of its own under some name, and run there in a
/// host that records: each run is a new process.
class ModulePlace {
public:
    explicit ModulePlace(const std::string& fileName = "tessaro24-64.arx");

    const std::filesystem::path& folder() const { return place.path(); }
    void makeLogFolder() const { std::filesystem::create_directory(folder() / "Log"); }

    /// Lines that the host printed; "exit STATUS" is added for a status other
    /// than 0, "hung" for a process that had to be ended after a minute.
    std::vector<std::string> run(const std::vector<std::string>& steps) const;

    /// Has the host's program run under another name, from the module's folder.
    void nameHost(const std::string& fileName);
    /// What the last run wrote to the standard error stream.
    std::string errors() const { return readFile(place.path() / "errors"); }

    /// Lines of the session's log, without their line ends; of the only file in
    /// the folder "Log".
    std::vector<std::string> log() const;

private:
    TemporaryFolder place;
    std::filesystem::path module;
    std::filesystem::path program = TESSARO_BIN_DIR "/entry_recorder";
};

} // namespace tests
