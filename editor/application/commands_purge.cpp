#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"
#include "editor/database/purging.h"

#include <set>
#include <utility>
#include <vector>

namespace editor {

namespace {

struct Kind {
    Purgeable kind;
    const wchar_t* option;
    const wchar_t* word;
};

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = {{Purgeable::Block, L"Blocks", L"block"},
                                          {Purgeable::Layer, L"LAyers", L"layer"},
                                          {Purgeable::Linetype, L"LTypes", L"linetype"},
                                          {Purgeable::TextStyle, L"STyles", L"text style"}};
    return all;
}

void purge(Editor& editor) {
    CommandLine& line = editor.commandLine();
    AcDbDatabase& database = *acdbHostApplicationServices()->workingDatabase();
    const auto option = line.getKeyword(L"Enter type of unused objects to purge [Blocks/LAyers/LTypes/STyles/All]: ",
                                        Keywords(L"Blocks LAyers LTypes STyles All"), L"");
    std::wstring pattern = upperCased(line.getLine(L"Enter name(s) to purge <*>: "));
    if (pattern.empty())
        pattern = L"*";
    const Keywords yesNo(L"Yes No");
    const bool verifies = line.getKeyword(L"Verify each name to be purged? [Yes/No] <Y>: ", yesNo, L"Yes") == L"Yes";
    std::size_t purged = 0;
    std::set<AcDbObjectId,
             decltype([](const AcDbObjectId& one, const AcDbObjectId& other) { return one.handle < other.handle; })>
        kept;
    // What a purged block used may be unused now.
    for (bool again = true; again;) {
        again = false;
        for (const Kind& kind : kinds()) {
            if (option != L"All" && option != kind.option)
                continue;
            for (const UnusedRecord& unused : unusedRecords(database, kind.kind)) {
                if (kept.contains(unused.record) || !matchesWildCard(upperCased(unused.name), pattern))
                    continue;
                if (verifies &&
                    line.getKeyword(L"Purge " + std::wstring(kind.word) + L" \"" + unused.name + L"\"? <N>: ", yesNo,
                                    L"No") == L"No") {
                    kept.insert(unused.record);
                } else if (eraseObject(unused.record) == eOk) {
                    editor.console().printLine(L"Deleting " + std::wstring(kind.word) + L" \"" + unused.name + L"\".");
                    ++purged;
                    again = true;
                } else {
                    kept.insert(unused.record);
                }
            }
        }
    }
    if (purged == 0 && kept.empty())
        editor.console().printLine(L"No unreferenced objects found.");
}

} // namespace

void addPurgeCommand(Editor& editor) {
    for (const wchar_t* const name : {L"PURGE", L"-PURGE"})
        editor.commands().addOwn({L"EDITOR", name, name, ACRX_CMD_MODAL, [&editor] { purge(editor); }});
}

} // namespace editor
