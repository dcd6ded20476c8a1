#pragma once

#include "tessaro/browser/painting/PrintCatalogue.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/UserInterface.h"
#include "tests/painting/RecorderContext.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <functional>

namespace tests {

/// A block list that is told row by row, and the progress window.
class ListOfRows : public PrintWindow {
public:
    std::vector<PrintRow> rows;
    const ImageList* pictures = nullptr;
    std::vector<std::string> progress; ///< "open 3", "at 0" ..., "close"
    std::function<void(int row)> onRow;

    int RowCount() const override { return static_cast<int>(rows.size()); }
    PrintRow Row(int row) const override {
        if (onRow)
            onRow(row);
        return rows.at(static_cast<std::size_t>(row));
    }
    const ImageList* Pictures() const override { return pictures; }
    void OpenProgress(int range) override { progress.push_back("open " + std::to_string(range)); }
    void SetProgress(int position) override { progress.push_back("at " + std::to_string(position)); }
    void CloseProgress() override { progress.emplace_back("close"); }
};

/// Keeps what the user is told.
class Messages : public platform::UserInterface {
public:
    Messages() { platform::SetUserInterface(this); }
    ~Messages() override { platform::SetUserInterface(nullptr); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    std::vector<std::wstring> texts, captions;

    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption, platform::MessageButtons,
                                       platform::MessageIcon) override {
        texts.push_back(text);
        captions.push_back(caption);
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return std::nullopt; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return std::nullopt; }
    void ShowHelp(const std::wstring&) override {}
};

/// A directory "/parts" as the current one, printed on a device that records.
class PrintFixture : public HelperFixture {
protected:
    PrintFixture();
    ~PrintFixture() override;

    /// Blocks "a0", "a1" ... without pictures of their own at the end of the list.
    void addBlocks(int count);
    Block& addBlock(const std::wstring& name);
    void page(int width, int height, int resolution);
    void print() { PrintCatalogue(dc, list); }

    TemporaryFolder folder;
    Directory directory;
    RecorderContext dc;
    ListOfRows list;
    Messages messages;
};

} // namespace tests
