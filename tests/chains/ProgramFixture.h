#pragma once

#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace tests {

constexpr const char* kList = "LIST ALL\n\n";
constexpr const char* kQuit = "QUIT\nY\n";

/// The program in batch mode with the module, on the drawing PLAN.dwg of its own folder; its dialog is answered by a
/// script.
class ProgramTest : public testing::Test {
protected:
    /// PLAN.dwg is there from the start, with nothing in it.
    ProgramTest();

    /// A drawing with one line.
    static void MakeDrawing(const std::filesystem::path& file);
    /// Settings with one Directory, "Lib"; `more` are lines for its section.
    void Catalogue(const std::filesystem::path& library, const std::string& more = {}) const;

    /// The command line that runs a script on PLAN.dwg.
    std::string CommandLine(const std::string& script, const std::string& program = TESSARO_BIN_DIR "/tessaro-editor",
                            const std::string& more = {}) const;
    /// Runs a script; the transcript stays in `transcript`, the exit status is given.
    int Run(const std::string& script, const std::string& program = TESSARO_BIN_DIR "/tessaro-editor",
            const std::string& more = {});

    /// Opens the browser on the library and takes a block.
    static std::string Choose(const std::string& block, const std::string& options = {},
                              const std::string& button = "Insert");
    std::size_t Count(const std::string& text) const { return CountIn(transcript, text); }
    static std::size_t CountIn(const std::string& whole, const std::string& text);

    TemporaryFolder folder;
    std::string transcript;
};

} // namespace tests
