#pragma once

#include "editor/application/editor.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tests/browser/Answers.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>
#include <gtest/gtest.h>

class Directory;

/// The dialog in the real editor, with its real worker, over temporary folders.
class Browser : public testing::Test {
protected:
    Browser();
    ~Browser() override;

    /// A folder of drawings of the release 2000, each of some bytes that hold nothing more than their mark, and its
    /// Directory at the end of the catalogue. `mark` is the version mark.
    Directory* AddFolder(const std::wstring& description, const std::vector<std::string>& names,
                         const std::string& mark = "AC1015");
    /// Opens the dialog, carries the script out in its modal loop and closes the dialog where the script did not.
    void Run(const std::function<void(BlockDlg&)>& script);
    /// Lets the modal loop run until the condition holds; fails after thirty seconds.
    static bool WaitFor(const std::function<bool()>& condition);
    /// Until the worker has nothing to do: a directory that is put first at the very end of another's pass would leave
    /// the queue with it.
    static bool WaitIdle();

    tests::TemporaryFolder folder;
    editor::Editor host;
    AcDbDatabase* drawing = nullptr;
};
