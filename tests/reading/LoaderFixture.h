#pragma once

#include "tests/reading/HelperFixture.h"
#include "tests/support/RecorderWindow.h"
#include "tests/support/TemporaryFolder.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/reading/Loader.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <initializer_list>
#include <mutex>
#include <string>
#include <vector>

namespace tests {

/// A catalogue of small files, a window that records, and a worker whose helper
/// is watched: each drawing that it asks for is noted, and may be held up
/// there. The test's thread is the main thread and serves while it waits.
class LoaderTest : public HelperFixture {
protected:
    LoaderTest();
    ~LoaderTest() override;

    /// A folder with these files ("a" gives "a.dwg") as the last Directory, with
    /// its row in the window.
    Directory* AddFolder(const std::string& name, std::initializer_list<const char*> titles);
    void WriteDrawing(const std::string& folder, const std::string& title, const std::string& bytes = "no drawing");

    /// As the dialog does at its opening: the worker, ValidateDirs, then
    /// `dialogOpen`.
    void Open();
    /// As the dialog does at its end; what closed and opened again can be told
    /// from `window.commands`.
    void Close();
    /// Serves the other threads' calls until the condition holds. False after
    /// half a minute.
    bool ServeUntil(const std::function<bool()>& condition);
    void ServeFor(std::chrono::milliseconds time);
    bool AllLoaded() const;
    bool ServeUntilAllLoaded();
    /// Until the queue is empty, a moment after the last Directory is `loaded`, and nothing interrupts the worker.
    bool ServeUntilIdle();

    /// Titles of the drawings that were examined, folder and title ("a/one"), in
    /// their order.
    std::vector<std::string> Examined() const;
    /// Has the worker wait inside the examination of this drawing until Release.
    void HoldAt(const std::string& drawing);
    /// Serves until the worker is there.
    bool ServeUntilHeld();
    void Release();

    static Block* BlockOf(const Directory& directory, const std::wstring& name);
    static std::vector<std::wstring> Names(const Directory& directory);
    RecorderWindow::DirectoryRow& RowOf(const Directory& directory);

    TemporaryFolder folder;
    RecorderWindow window;
    LoaderWaits waits{std::chrono::milliseconds(2), std::chrono::milliseconds(1)};

private:
    void Watch(const std::wstring& path);

    mutable std::mutex watchLock; ///< guards what follows
    std::condition_variable released;
    std::vector<std::string> examined;
    std::string heldDrawing;
    bool held = false;
};

} // namespace tests
