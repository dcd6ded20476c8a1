#pragma once

#include "editor/application/editor.h"

#include <map>
#include <random>
#include <string>

class BlockDlg;

/// Random use of what lies around the browser: its child windows, placements with their picks, commands of the editor.
class ProductUse : public editor::UserInput {
public:
    /// Drawing and sheets are written to the folder. Becomes the editor's user, with the module's reactor.
    ProductUse(editor::Editor& editor, std::mt19937& randomness, std::wstring folder);
    ~ProductUse() override;
    ProductUse(const ProductUse&) = delete;
    ProductUse& operator=(const ProductUse&) = delete;

    /// Answers what a command asks, now and then by Escape.
    editor::UserEvent next(const editor::Prompt& prompt) override;

    /// Draws, erases, takes back, saves.
    void UseEditor();
    /// One thing; true where the dialog closes to place a block.
    bool UseDialog(BlockDlg& dialog);
    /// What is wrong with the saved drawing, in words; empty where it holds what the open one does.
    std::string CheckSavedDrawing();

    std::map<std::string, int> done;

private:
    bool Place(BlockDlg& dialog);
    void ChangeSettings(BlockDlg& dialog);
    void Describe(BlockDlg& dialog);
    void Print(BlockDlg& dialog);
    void ChangePreferences(BlockDlg& dialog);
    bool SelectBlock(BlockDlg& dialog);
    unsigned Below(unsigned end) { return static_cast<unsigned>(random() % end); }
    bool Chance(unsigned percent) { return Below(100) < percent; }

    editor::Editor& host;
    std::mt19937& random;
    const std::wstring place;
    int answers = 0; ///< since the last command began
    bool saved = false;
    int lastNumber = 0;
};
