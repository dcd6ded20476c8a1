#pragma once

#include "tests/support/TemporaryFolder.h"

#include "editor/sdk/documents.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/UserInterface.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tests {

/// What was queued on the command line.
struct SentText {
    std::wstring text;
    bool activate = false, wrapUp = true, echo = true;
    bool operator==(const SentText&) const = default;
};

/// A host with one drawing that keeps what the placement asks of it; its functions stand in front of those of the
/// host's library. The catalogue has one Directory, "/lib", with the Block "DOOR", and that Directory is current.
class PlacementTest : public testing::Test, public platform::UserInterface {
public:
    static PlacementTest* current;

    AcDbDatabase drawing;
    std::vector<SentText> sent;
    std::vector<AcDbObjectId> layersAtSending;    ///< the current layer when each of them was queued
    std::map<std::wstring, double> reals;         ///< variables that hold a real number
    std::map<std::wstring, short> shorts;         ///< variables that were set
    std::vector<std::vector<std::wstring>> lists; ///< what acedCmdS was given, elements as text
    int listResult = 0;
    std::vector<std::wstring> questions;
    platform::MessageAnswer answer = platform::MessageAnswer::Yes;

protected:
    PlacementTest();
    ~PlacementTest() override;

    std::vector<std::wstring> Sent() const;
    /// Makes a definition of that name in the drawing.
    void Define(const std::wstring& name);
    bool IsDefined(const std::wstring& name);
    Block* AddBlock(Directory& owner, const std::wstring& name);

    Directory* directory = nullptr;
    Block* door = nullptr;

private:
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption,
                                       platform::MessageButtons buttons, platform::MessageIcon icon) override;
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}
};

} // namespace tests
