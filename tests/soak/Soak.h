#pragma once

#include "tests/soak/Library.h"
#include "tests/soak/ProductUse.h"
#include "tests/soak/Watchdog.h"

#include "tessaro/platform/UserInterface.h"

#include <atomic>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

class BlockDlg;

/// Answers the questions of the dialog's buttons; other messages are kept as complaints.
class SoakAnswers : public platform::UserInterface {
public:
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption,
                                       platform::MessageButtons buttons, platform::MessageIcon icon) override;
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring& title, const std::wstring& start) override;
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return std::nullopt; }
    void ShowHelp(const std::wstring&) override {}

    std::function<std::wstring()> pick;
    std::vector<std::wstring> complaints;
};

/// Random use of the real dialog over a library that changes meanwhile.
class Soak {
public:
    struct Plan {
        int operations = 400;
        int folders = 20;
        unsigned seed = 1;
        /// Leaves out what may save pictures that are not in memory: settings that free them, and deleted drawings.
        bool keepsPictures = false;
        /// Uses what lies around the browser too: child windows, placements, the editor.
        bool wholeProduct = false;
    };
    Soak(Plan plan, Watchdog& watchdog, editor::Editor& editor);
    ~Soak();
    Soak(const Soak&) = delete;
    Soak& operator=(const Soak&) = delete;

    /// Carries the plan out.
    void Use();
    /// Opens once more, reads everything, closes.
    void ReadAll();
    /// Forgets the catalogue and makes it anew from the folders that it had, in one quiet opening.
    void ReadAnew();

    /// How often each operation was carried out.
    const std::map<std::string, int>& Done() const { return done; }
    const std::vector<std::wstring>& Complaints() const { return answers.complaints; }
    /// What did not hold, in words; the first ends the use.
    const std::string& Broken() const { return broken; }

private:
    void UseProduct();
    void Watch(std::string wrong);
    void Open(const std::function<void(BlockDlg&)>& script);
    void UseOpening(BlockDlg& dialog);
    void Operate(BlockDlg& dialog);
    void Click(BlockDlg& dialog);
    void Delete(BlockDlg& dialog);
    void Reload();
    void Rest(BlockDlg& dialog);
    void WaitForAll();
    void ServeEvents(const char* doing);
    bool Chance(unsigned percent) { return random() % 100 < percent; }
    void AddToCatalogue(const std::wstring& folder);

    static Soak* running; ///< the one whose command it is

    const Plan plan;
    Watchdog& watchdog;
    std::mt19937 random;
    Library library;
    SoakAnswers answers;
    std::optional<ProductUse> product;
    std::map<std::string, int> done;
    std::string broken;
    int deletesBefore = 0; ///< this opening
    int left;
};
