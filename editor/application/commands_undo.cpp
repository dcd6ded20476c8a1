#include "editor/application/commands.h"
#include "editor/application/editor.h"
#include "editor/application/numbers.h"
#include "editor/database/undo.h"

namespace editor {

namespace {

class UndoCommand {
public:
    explicit UndoCommand(Editor& running)
        : editor(running), document(*running.documents().current()), database(*document.database()) {}

    void one() { takeBack(1); }

    void again() {
        const auto name = redoGroup(database);
        if (!name)
            return editor.console().printLine(L"Nothing to redo.");
        editor.console().printLine(*name);
        changed();
    }

    void several() {
        PromptOptions options;
        options.mayBeEmpty = true;
        options.keywords = Keywords(L"BEgin End Mark Back");
        while (true) {
            const auto answer = editor.commandLine().getWord(
                L"Enter the number of operations to undo or [BEgin/End/Mark/Back] <1>: ", options);
            if (!answer.keyword.empty())
                return carryOut(answer.keyword);
            const auto count = answer.value ? parseWholeNumber(*answer.value) : std::optional<long>(1);
            if (count && *count > 0 && *count <= 32767)
                return takeBack(static_cast<std::size_t>(*count));
            editor.console().printFault(L"Requires an integer between 1 and 32767 or an option keyword.");
        }
    }

private:
    void takeBack(std::size_t count) {
        std::size_t done = 0;
        for (; done < count; ++done) {
            const auto name = undoGroup(database);
            if (!name)
                break;
            editor.console().printLine(name->empty() ? L"Undo" : *name);
        }
        if (done < count)
            editor.console().printLine(done == 0 ? L"Nothing to undo." : L"Everything has been undone.");
        if (done > 0)
            changed();
        const std::size_t depth = undoDepth(database);
        std::erase_if(document.undoMarks, [depth](std::size_t mark) { return mark > depth; });
        if (document.undoBegin && *document.undoBegin > depth)
            document.undoBegin.reset();
    }

    void carryOut(const std::wstring& option) {
        const std::size_t depth = undoDepth(database);
        if (option == L"Mark") {
            document.undoMarks.push_back(depth);
        } else if (option == L"Back") {
            back(depth);
        } else if (option == L"BEgin") {
            document.undoBegin = depth;
        } else if (!document.undoBegin) {
            editor.console().printLine(L"No group is open.");
        } else {
            joinUndoGroups(database, *document.undoBegin, L"GROUP");
            document.undoBegin.reset();
        }
    }

    void back(std::size_t depth) {
        std::size_t mark = 0;
        if (!document.undoMarks.empty()) {
            mark = document.undoMarks.back();
            document.undoMarks.pop_back();
        } else if (editor.commandLine().getKeyword(L"This will undo everything. OK? <Y>: ", Keywords(L"Yes No"),
                                                   L"Yes") == L"No") {
            return;
        }
        if (depth > mark)
            takeBack(depth - mark);
    }

    void changed() {
        document.markChanged();
        editor.window().drawingChanged();
    }

    Editor& editor;
    Document& document;
    AcDbDatabase& database;
};

} // namespace

void addUndoCommands(Editor& editor) {
    const auto add = [&editor](const wchar_t* name, void (UndoCommand::*function)()) {
        editor.commands().addOwn({L"EDITOR", name, name, ACRX_CMD_MODAL, [&editor, function] {
                                      UndoCommand command(editor);
                                      (command.*function)();
                                  }});
    };
    add(L"U", &UndoCommand::one);
    add(L"UNDO", &UndoCommand::several);
    add(L"REDO", &UndoCommand::again);
}

} // namespace editor
