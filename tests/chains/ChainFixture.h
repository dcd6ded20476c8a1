#pragma once

#include "editor/application/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/CmdLineReactor.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/UserInterface.h"
#include "tests/chains/SavedDrawing.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tests {

/// A user of the editor and of the module's message boxes who does what was written down, and then presses Escape until
/// a command has ended.
class WrittenUser : public editor::UserInput, public platform::UserInterface {
public:
    editor::UserEvent next(const editor::Prompt& prompt) override;

    void Picks(double x, double y) { events.push_back({editor::UserEvent::Kind::Point, {}, {x, y, 0}}); }
    void Types(const std::wstring& text) { events.push_back({editor::UserEvent::Kind::Text, text, {}}); }
    void Cancels() { events.push_back({editor::UserEvent::Kind::Cancel, {}, {}}); }

    std::deque<editor::UserEvent> events;
    std::vector<std::wstring> messages;
    platform::MessageAnswer answer = platform::MessageAnswer::Yes;
    int unexpected = 0; ///< prompts of commands for which nothing was written down

private:
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        messages.push_back(text);
        return answer;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}
};

/// The editor on a new drawing, with the placement's reactor. A command TESSARO stands for the browser: each time it
/// runs it counts, and does what the browser would do when its window is destroyed. The catalogue has one Directory, a
/// folder with the drawing DOOR.dwg (a line from 0,0 to 1,0 on the layer "Leaf").
class ChainTest : public testing::Test {
protected:
    ChainTest();
    ~ChainTest() override;

    /// Writes a drawing with one line into the folder and makes it a Block.
    Block* AddBlock(const std::wstring& name);
    Block* AddBlockWithoutFile(const std::wstring& name);
    std::wstring PathOf(const std::wstring& fileName) const;

    /// Runs TESSARO once, which closes by that routine; comes back when the editor waits for a command again.
    void Place(int (*routine)(Block*), Block* block);
    void Insert(Block* block) { Place(InsertBlockWithRelaunch, block); }

    AcDbDatabase& Drawing() { return *editor.documents().current()->database(); }
    /// What model space holds, "LINE", "INSERT DOOR" ..., in order.
    std::vector<std::string> Model();
    bool IsDefined(const std::wstring& name);
    std::wstring CurrentLayer();
    bool Said(const std::string& text) const { return transcript.find(text) != std::string::npos; }
    /// All that undoing must bring back: entities with their layers, names of all tables, variables.
    std::string Content();
    /// Takes all commands back, one U after the other.
    void UndoAll();
    /// Notes what is there now, in the drawing and in its file.
    void Remember();
    /// Takes all commands back and looks that the drawing is what was noted, also as it is saved.
    void ExpectUndone();
    void ExpectFlags(bool active, bool explode, bool multiple, bool relaunch);

    TemporaryFolder folder;
    std::string transcript;
    WrittenUser user;
    editor::Editor editor;
    Directory* directory = nullptr;
    Block* door = nullptr;
    int opened = 0; ///< how often TESSARO ran
    int (*routine)(Block*) = nullptr;
    Block* chosen = nullptr;
    std::string contentBefore;
    std::optional<SavedDrawing> savedBefore;
};

} // namespace tests
