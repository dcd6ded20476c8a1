#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/placing.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"
#include "editor/database/exploding.h"

#include <memory>
#include <vector>

namespace editor {

namespace {

/// What was answered for the block's name: "DOOR", "/lib/DOOR.dwg", "DOOR=/lib/OTHER.dwg"; a star in front of it asks
/// for the block's pieces.
struct BlockSource {
    std::wstring name;
    std::wstring file; ///< empty: a definition of that name, or a file found by it
};

BlockSource parsed(const std::wstring& answer) {
    BlockSource source;
    std::wstring file = answer;
    if (const auto equals = answer.find(L'='); equals != std::wstring::npos && !hasFolder(answer.substr(0, equals))) {
        source.name = trimmed(answer.substr(0, equals));
        file = trimmed(answer.substr(equals + 1));
        source.file = file.empty() ? source.name : file;
        return source;
    }
    source.name = drawingTitle(file);
    if (hasFolder(file) || endsWithIgnoringCase(file, L".dwg"))
        source.file = file;
    return source;
}

class InsertCommand {
public:
    explicit InsertCommand(Editor& running)
        : editor(running), line(running.commandLine()), database(*acdbHostApplicationServices()->workingDatabase()) {}

    void run() {
        const AcDbObjectId block = askForBlock();
        if (!inPieces) {
            Placing(editor).place(block);
            return;
        }
        const AcDbObjectId reference = Placing(editor).placeEvenly(block);
        std::vector<AcDbObjectId> pieces;
        if (explodeReference(reference, pieces) != Explosion::Done)
            throw CommandFailed{L"The block \"" + recordName(block) + L"\" can't be taken apart."};
    }

private:
    AcDbObjectId askForBlock() {
        while (true) {
            const auto last = std::get<std::wstring>(*editor.variables().get(L"INSNAME"));
            std::wstring answer =
                line.getLine(L"Enter block name or [?]" + (last.empty() ? L"" : L" <" + last + L">") + L": ");
            if (answer == L"?") {
                listBlocks();
                continue;
            }
            if (answer.empty())
                answer = last;
            if (answer.empty())
                continue;
            inPieces = answer.size() > 1 && answer[0] == L'*';
            const BlockSource source = parsed(inPieces ? trimmed(answer.substr(1)) : answer);
            if (source.name.empty() || source.name[0] == L'*')
                throw CommandFailed{L"\"" + source.name + L"\" is no name for a block."};
            const AcDbObjectId block = definition(source);
            editor.variables().setInsertName(source.name);
            return block;
        }
    }

    AcDbObjectId definition(const BlockSource& source) {
        const AcDbObjectId existing = findBlock(database, source.name);
        if (!existing.isNull()) {
            if (source.file.empty())
                return existing;
            const auto answer =
                line.getKeyword(L"Block \"" + source.name + L"\" already exists. Redefine it? " + L"[Yes/No] <N>: ",
                                Keywords(L"Yes No"), L"No");
            if (answer == L"No")
                return existing;
        }
        const std::wstring wanted = withExtension(source.file.empty() ? source.name : source.file, L".dwg");
        const auto file = editor.findFile(wanted);
        if (!file)
            throw CommandFailed{L"Can't find file \"" + wanted + L"\"."};
        AcDbDatabase side(false);
        AcDbObjectId block;
        int status = side.readDwgFile(file->c_str());
        if (status == eOk)
            status = database.insert(block, source.name.c_str(), &side);
        if (status != eOk)
            throw CommandFailed{L"Can't insert \"" + *file + L"\": " + statusText(status) + L"."};
        if (!existing.isNull())
            editor.console().printLine(L"Block \"" + source.name + L"\" redefined.");
        // The drawing may have brought references of its own.
        editor.documents().resolveReferences(*editor.documents().current());
        return block;
    }

    void listBlocks() {
        std::wstring pattern = line.getText(L"Enter block(s) to list <*>: ", false);
        if (pattern.empty())
            pattern = L"*";
        AcDbBlockTable* table = nullptr;
        if (database.getBlockTable(table) != eOk)
            return;
        AcDbSymbolTableIterator* iterator = nullptr;
        if (table->newIterator(iterator) == eOk) {
            const std::unique_ptr<AcDbSymbolTableIterator> owned(iterator);
            for (; !owned->done(); owned->step()) {
                AcDbObjectId id;
                owned->getRecordId(id);
                const std::wstring name = recordName(id);
                if (!name.empty() && name[0] != L'*' && matchesWildCard(upperCased(name), upperCased(pattern)))
                    editor.console().printLine(L"\"" + name + L"\"");
            }
        }
        table->close();
    }

    Editor& editor;
    CommandLine& line;
    AcDbDatabase& database;
    bool inPieces = false;
};

} // namespace

void addInsertCommand(Editor& editor) {
    editor.commands().addOwn(
        {L"EDITOR", L"-INSERT", L"-INSERT", ACRX_CMD_MODAL, [&editor] { InsertCommand(editor).run(); }});
}

} // namespace editor
