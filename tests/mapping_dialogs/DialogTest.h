#pragma once

#include "editor/application/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/UserInterface.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << text.toStdString();
}

namespace tests {

/// A dialog over the real editor on a new drawing. Message boxes are written down, colours are picked as told.
class DialogTest : public testing::Test, public platform::UserInterface, public editor::WindowServices {
protected:
    DialogTest();
    ~DialogTest() override;

    /// Runs a script in the dialog that a modal loop shows next, and leaves it by Escape where the script did not. Call
    /// before what opens the dialog.
    template <class Dialog> void InNext(std::function<void(Dialog&)> script) {
        ++waiting;
        QTimer::singleShot(0, [this, script] {
            auto* const dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr) << "another dialog is up";
            --waiting;
            script(*dialog);
            if (dialog->isVisible())
                QTest::keyClick(dialog, Qt::Key_Escape);
        });
    }
    /// Expects that no dialog comes up meanwhile.
    void WithoutDialog(const std::function<void()>& action);

    template <class Control> static Control* Find(const QWidget& dialog, const char* name) {
        auto* const found = dialog.findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    static void Click(const QWidget& dialog, const char* name) { Find<QAbstractButton>(dialog, name)->click(); }
    /// The button of a dialog's box: "OK", "Cancel".
    static void Press(const QWidget& dialog, const QString& caption);
    static void Type(QLineEdit& edit, const QString& text);
    static void Type(QComboBox& box, const QString& text) { Type(*box.lineEdit(), text); }
    static void Pick(QComboBox& box, const QString& entry);
    static std::vector<std::string> Entries(const QComboBox& box);
    /// Rows as "first|second".
    static std::vector<std::string> Rows(const QTreeWidget& list);
    static void SelectRow(QTreeWidget& list, int row) { list.setCurrentItem(list.topLevelItem(row)); }
    static void DoubleClick(QTreeWidget& list, int row);
    static int SelectedRow(const QTreeWidget& list);

    MapScheme& AddScheme(const std::wstring& name, int schemeType = 0);
    void SetSymbol(const std::wstring& name, editor::LispValue value) { host.lisp().setSymbol(name, std::move(value)); }
    void AddLinetype(const std::wstring& name);

    // What the window of the editor is asked.
    std::optional<int> pickColour(int start) override {
        colourStarts.push_back(start);
        return colour;
    }

    editor::Editor host;
    AcDbDatabase& drawing;
    Directory directory;                                         ///< the current one
    std::vector<std::pair<std::wstring, std::wstring>> messages; ///< title and text
    std::optional<int> colour;                                   ///< what the user picks; none is a cancel
    std::vector<int> colourStarts;

private:
    platform::MessageAnswer MessageBox(const std::wstring& text, const std::wstring& caption, platform::MessageButtons,
                                       platform::MessageIcon) override {
        messages.emplace_back(caption, text);
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}

    int waiting = 0; ///< scripts whose dialog has not come
};

} // namespace tests
