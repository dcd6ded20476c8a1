#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/format.h"
#include "editor/application/numbers.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"

#include <memory>

namespace editor {

namespace {

/// What was answered for the block's name: "DOOR", "/lib/DOOR.dwg", "DOOR=/lib/OTHER.dwg".
struct BlockSource {
    std::wstring name;
    std::wstring file; ///< empty: a definition of that name, or a file found by it
    bool redefines = false;
};

BlockSource parsed(const std::wstring& answer) {
    BlockSource source;
    std::wstring file = answer;
    if (const auto equals = answer.find(L'='); equals != std::wstring::npos && !hasFolder(answer.substr(0, equals))) {
        source.name = trimmed(answer.substr(0, equals));
        source.redefines = true;
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
        const AcGePoint3d point = askForPoint();
        if (!scalePreset)
            askForScale(point);
        if (!rotation)
            rotation = askForRotation(point);
        auto reference = std::make_unique<AcDbBlockReference>(point, block);
        reference->setScaleFactors(scale);
        reference->setRotation(*rotation);
        if (addToModelSpace(database, std::move(reference)).isNull())
            throw CommandFailed{L"The drawing does not take the block reference."};
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
            const BlockSource source = parsed(answer);
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

    AcGePoint3d askForPoint() {
        PromptOptions options;
        options.keywords = Keywords(L"Scale X Y Z Rotate");
        while (true) {
            const auto answer = line.getPoint(L"Specify insertion point or [Scale/X/Y/Z/Rotate]: ", options);
            if (answer.value)
                return *answer.value;
            if (answer.keyword == L"Rotate")
                rotation = askForRotation(std::nullopt);
            else
                presetScale(answer.keyword);
        }
    }

    void presetScale(const std::wstring& option) {
        scalePreset = true;
        if (option == L"Scale") {
            const double factor = askForFactor(L"Specify scale factor for XYZ axes <1>: ", 1, std::nullopt);
            scale = {factor, factor, factor};
        } else {
            double& axis = option == L"X" ? scale.x : option == L"Y" ? scale.y : scale.z;
            axis = askForFactor(L"Specify " + option + L" scale factor <1>: ", 1, std::nullopt);
        }
    }

    void askForScale(const AcGePoint3d& point) {
        PromptOptions options;
        options.mayBeEmpty = true;
        options.nonZero = true;
        options.base = point;
        options.keywords = Keywords(L"XYZ");
        const auto answer = line.getNumber(L"Enter X scale factor or [XYZ] <1>: ", options);
        const bool eachAxis = answer.keyword == L"XYZ";
        scale.x = eachAxis ? askForFactor(L"Specify X scale factor <1>: ", 1, point) : answer.value.value_or(1);
        scale.y = askForFactor(L"Enter Y scale factor <use X scale factor>: ", scale.x, point);
        scale.z = eachAxis ? askForFactor(L"Specify Z scale factor <use X scale factor>: ", scale.x, point) : scale.x;
    }

    double askForFactor(const std::wstring& prompt, double byDefault, const std::optional<AcGePoint3d>& base) {
        PromptOptions options;
        options.mayBeEmpty = true;
        options.nonZero = true;
        options.base = base;
        return line.getNumber(prompt, options).value.value_or(byDefault);
    }

    double askForRotation(const std::optional<AcGePoint3d>& base) {
        PromptOptions options;
        options.mayBeEmpty = true;
        options.base = base;
        return line.getAngle(L"Specify rotation angle <0>: ", options).value.value_or(0);
    }

    Editor& editor;
    CommandLine& line;
    AcDbDatabase& database;
    bool scalePreset = false;
    AcGeVector3d scale{1, 1, 1};
    std::optional<double> rotation;
};

} // namespace

void addInsertCommand(Editor& editor) {
    editor.commands().addOwn(
        {L"EDITOR", L"-INSERT", L"-INSERT", ACRX_CMD_MODAL, true, [&editor] { InsertCommand(editor).run(); }});
}

} // namespace editor
