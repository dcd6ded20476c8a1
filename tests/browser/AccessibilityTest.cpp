// What assistive programs are told of the window.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tests/support/Shell.h"

#include <QAccessible>
#include <QTest>

namespace {

/// The tree of what a person can come to: a line for each focusable visible object, "ROLE NAME | DESCRIPTION". Empty
/// cells are left out.
void Dump(QAccessibleInterface* object, QStringList& lines, QStringList& faults) {
    if (object == nullptr || !object->isValid())
        return;
    const QAccessible::State state = object->state();
    if (state.invisible)
        return;
    const QString name = object->text(QAccessible::Name);
    const bool emptyCell = object->role() == QAccessible::Cell && name.isEmpty();
    if (state.focusable && !emptyCell) {
        const QString line = QStringLiteral("%1 %2 | %3")
                                 .arg(static_cast<int>(object->role()))
                                 .arg(name, object->text(QAccessible::Description));
        lines << line;
        if (name.trimmed().isEmpty() || object->role() == QAccessible::NoRole || object->role() == QAccessible::Client)
            faults << line + " of " + (object->object() ? object->object()->objectName() : QString("a cell"));
    }
    for (int child = 0; child < object->childCount(); ++child)
        Dump(object->child(child), lines, faults);
}

struct Accessibility : Browser {
    Accessibility() { QAccessible::setActive(true); }
    ~Accessibility() override { QAccessible::setActive(false); }
    static QAccessibleInterface* Of(QWidget* widget) { return QAccessible::queryAccessibleInterface(widget); }
};

TEST_F(Accessibility, EverythingInTheSampleLibrarysWindowHasANameAndARole) {
    const tests::ShellRun samples =
        tests::runShell("timeout 60 " TESSARO_BIN_DIR "/tessaro-samples " + tests::quoted(folder.path().string()) +
                        " furniture electrical mechanical");
    ASSERT_EQ(samples.status, 0) << samples.output;
    for (const wchar_t* name : {L"furniture", L"electrical", L"mechanical"}) {
        auto* const directory = new Directory;
        directory->path = (folder.path() / name).wstring();
        directory->description = name;
        directory->cacheFile = (folder.path() / name).wstring() + L".cache";
        directories.push_back(directory);
    }
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(0);
        QStringList lines, faults;
        Dump(Of(&dlg), lines, faults);
        EXPECT_EQ(faults.join('\n').toStdString(), "");
        const auto has = [&](QAccessible::Role role, const char* name) {
            return !lines.filter(QStringLiteral("%1 %2 | ").arg(static_cast<int>(role)).arg(name)).isEmpty();
        };
        for (const char* button :
             {"Close", "Help", "Insert", "Open", "Xref/A", "Add", "Delete", "Move Up", "Move Down"})
            EXPECT_TRUE(has(QAccessible::Button, button)) << button;
        for (const char* box : {"Explode", "Multiple Insert", "Repeat"})
            EXPECT_TRUE(has(QAccessible::CheckBox, box)) << box;
        for (const char* box : {"Scheme", "Scale", "Rotation"})
            EXPECT_TRUE(has(QAccessible::ComboBox, box)) << box;
        for (const char* edit : {"Quick Find", "Scale", "Rotation"})
            EXPECT_TRUE(has(QAccessible::EditableText, edit)) << edit;
        for (const char* table : {"Directories", "Blocks"})
            EXPECT_TRUE(has(QAccessible::Table, table)) << table;
        EXPECT_TRUE(has(QAccessible::Button, "View"));
        EXPECT_TRUE(has(QAccessible::Cell, "furniture"));
        EXPECT_TRUE(has(QAccessible::Cell, "Armchair"));
        const QString cells = QString::number(static_cast<int>(QAccessible::Cell));
        for (const QString& line : lines) {
            EXPECT_TRUE(line.startsWith(cells) || !line.endsWith("| ")) << line.toStdString() << "has no description";
        }
    });
}

TEST_F(Accessibility, ALettersMeaningIsToldAndAnElidedNameInFull) {
    AddFolder(L"A description that is much longer than the column is wide", {std::string(200, 'n')});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        QAccessibleTableInterface* const table = Of(dlg.Controls().directoryList)->tableInterface();
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->columnDescription(2), "Status");
        EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name),
                  "A description that is much longer than the column is wide");
        const std::pair<const wchar_t*, const char*> letters[]{
            {L"D", "The folder is being scanned"},
            {L"L", "The blocks are being listed"},
            {L"V", "The blocks are being compared with their files"},
            {L"S", "The catalogue of this directory is being saved"},
            {L"", ""},
        };
        for (const auto& [letter, meaning] : letters) {
            dlg.SetDirectoryCell(0, 2, letter);
            EXPECT_EQ(table->cellAt(0, 2)->text(QAccessible::Name).toStdWString(), letter);
            EXPECT_EQ(table->cellAt(0, 2)->text(QAccessible::Description), meaning);
        }
        EXPECT_EQ(Of(dlg.Controls().blockList)->tableInterface()->cellAt(0, 0)->text(QAccessible::Name),
                  QString(200, 'n'));
    });
}

TEST_F(Accessibility, ATableFollowsItsRowsAndItsView) {
    AddFolder(L"Furniture", {"chair", "desk", "lamp"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        QAccessibleInterface* const blocks = Of(dlg.Controls().blockList);
        QAccessibleTableInterface* const table = blocks->tableInterface();
        ASSERT_EQ(table->rowCount(), 3);
        ASSERT_EQ(table->columnCount(), 6);
        ASSERT_EQ(blocks->childCount(), 18);
        QAccessibleInterface* const last = blocks->child(12);
        EXPECT_EQ(last->text(QAccessible::Name), "lamp");
        EXPECT_EQ(blocks->indexOfChild(last), 12);
        EXPECT_EQ(last->parent(), blocks);
        EXPECT_EQ(last->rect().topLeft(),
                  dlg.Controls().blockList->viewport()->mapToGlobal(
                      dlg.Controls().blockList->visualRect(dlg.Controls().blockList->Rows().index(2, 0)).topLeft()));
        EXPECT_TRUE(table->selectRow(2));
        EXPECT_TRUE(last->state().selected);
        EXPECT_EQ(table->selectedRows(), QList<int>{2});
        EXPECT_EQ(table->selectedCells().size(), 6);
        EXPECT_FALSE(blocks->child(13)->state().invisible);
        dlg.SetView(0);
        EXPECT_TRUE(blocks->child(13)->state().invisible) << "only names stand in the other views";
        EXPECT_EQ(blocks->childAt(last->rect().center().x(), last->rect().center().y()), last);
        EXPECT_TRUE(table->unselectRow(2));
        EXPECT_EQ(table->selectedRowCount(), 0);
        dlg.EmptyBlockList();
        EXPECT_FALSE(last->isValid()) << "a cell outlives its row without harm";
        EXPECT_EQ(last->text(QAccessible::Name), "");
        EXPECT_EQ(blocks->childCount(), 0);
        EXPECT_EQ(blocks->child(3), nullptr);
    });
}

} // namespace
