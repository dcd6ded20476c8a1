#pragma once

#include "tessaro/catalogue/Directory.h"
#include "tests/support/RecorderWindow.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <vector>

/// A catalogue of folders on disk that is read by whole passes on the main thread, with a recorder for the window and
/// without a log. It is the module's catalogue as long as it lives.
class Reading {
public:
    Reading();
    ~Reading();
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    const std::filesystem::path& Place() const { return place.path(); }
    Directory* Add(const std::filesystem::path& folder);
    /// A pass over each Directory, shown or not.
    void ReadAll(bool shown);
    /// All is to be compared with the disk again.
    static void Invalidate();
    /// No Directory has Blocks or pictures any more.
    static void Empty();

    tests::RecorderWindow window;

private:
    const tests::TemporaryFolder place;
};

/// Real drawings where there are some, else those that the project itself has.
std::vector<std::filesystem::path> Drawings();
