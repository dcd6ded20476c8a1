#include "tessaro/platform/UserInterface.h"

#include "tessaro/platform/MainThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace platform;

namespace {

class Recorder : public UserInterface {
public:
    MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption, MessageButtons,
                             MessageIcon) override {
        Note(L"box " + caption + L": " + text);
        return MessageAnswer::Yes;
    }
    void BeginWaitCursor() override { Note(L"begin"); }
    void EndWaitCursor() override { Note(L"end"); }
    std::optional<std::wstring> PickFolder(const std::wstring& title, const std::wstring& start) override {
        Note(L"folder " + title);
        return start + L"/chosen";
    }
    std::optional<std::wstring> PickSaveFile(const std::wstring& title, const std::wstring&) override {
        Note(L"file " + title);
        return std::nullopt;
    }
    void ShowHelp(const std::wstring& file) override { Note(L"help " + file); }

    std::vector<std::wstring> notes;

private:
    void Note(const std::wstring& text) {
        EXPECT_TRUE(IsMainThread());
        notes.push_back(text);
    }
};

void UseEverything() {
    EXPECT_EQ(MessageBox(L"Sure?", L"Tessaro", MessageButtons::YesNo, MessageIcon::Question), MessageAnswer::Yes);
    MessageBox(L"Told");
    {
        const WaitCursor cursor;
        EXPECT_EQ(PickFolder(L"Choose", L"/a"), L"/a/chosen");
    }
    EXPECT_EQ(PickSaveFile(L"Save", L"/b"), std::nullopt);
    ShowHelp(L"tessaro.chm");
}

const std::vector<std::wstring> kEverything = {
    L"box Tessaro: Sure?", L"box Tessaro: Told", L"begin", L"folder Choose", L"end", L"file Save", L"help tessaro.chm"};

} // namespace

TEST(UserInterface, WithoutOneABoxAnswersOkOrNoAndPickersCancel) {
    EXPECT_EQ(MessageBox(L"x"), MessageAnswer::Ok);
    EXPECT_EQ(MessageBox(L"x", L"y", MessageButtons::YesNo), MessageAnswer::No);
    EXPECT_EQ(PickFolder(L"x", L"y"), std::nullopt);
    EXPECT_EQ(PickSaveFile(L"x", L"y"), std::nullopt);
    EXPECT_NO_THROW(ShowHelp(L"x"));
    EXPECT_NO_THROW(WaitCursor());
}

TEST(UserInterface, CallsReachTheInstalledOne) {
    Recorder recorder;
    SetUserInterface(&recorder);
    UseEverything();
    SetUserInterface(nullptr);
    EXPECT_EQ(recorder.notes, kEverything);
}

TEST(UserInterface, CallsOfAnotherThreadAreCarriedOutOnTheMainThread) {
    Recorder recorder;
    SetUserInterface(&recorder);
    std::atomic<bool> done{false};
    std::thread thread([&] {
        UseEverything();
        done = true;
        WakeMainThread();
    });
    ServeMainThreadUntil([&] { return done.load(); });
    thread.join();
    SetUserInterface(nullptr);
    EXPECT_EQ(recorder.notes, kEverything);
}
