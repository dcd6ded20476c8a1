#include "editor/application/commands.h"
#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/numbers.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"
#include "editor/database/layers.h"

#include <memory>
#include <vector>

namespace editor {

namespace {

/// Table records of a drawing by a pattern, ids and names.
struct Named {
    AcDbObjectId id;
    std::wstring name;
};

template <class Table> std::vector<Named> matching(Table* table, const std::wstring& pattern) {
    std::vector<Named> found;
    AcDbSymbolTableIterator* made = nullptr;
    if (table->newIterator(made) == eOk) {
        const std::unique_ptr<AcDbSymbolTableIterator> iterator(made);
        for (; !iterator->done(); iterator->step()) {
            AcDbObjectId id;
            iterator->getRecordId(id);
            const std::wstring name = recordName(id);
            if (matchesWildCard(upperCased(name), upperCased(pattern)))
                found.push_back({id, name});
        }
    }
    table->close();
    return found;
}

class LayerCommand {
public:
    explicit LayerCommand(Editor& running)
        : editor(running), line(running.commandLine()), database(*acdbHostApplicationServices()->workingDatabase()) {}

    void run() {
        editor.console().printLine(L"Current layer: \"" + recordName(database.clayer()) + L"\"");
        PromptOptions options;
        options.mayBeEmpty = true;
        options.keywords = Keywords(L"? Make Set New Rename ON OFF Color Ltype Freeze Thaw LOck Unlock");
        while (true) {
            const auto option = line.getWord(
                L"Enter an option [?/Make/Set/New/Rename/ON/OFF/Color/Ltype/Freeze/Thaw/LOck/Unlock]: ", options);
            if (option.empty())
                return;
            if (option.keyword.empty())
                editor.console().printFault(L"Invalid option keyword.");
            else
                carryOut(option.keyword);
        }
    }

private:
    void carryOut(const std::wstring& option) {
        if (option == L"?")
            list();
        else if (option == L"Make")
            make();
        else if (option == L"Set")
            set();
        else if (option == L"New")
            addAll();
        else if (option == L"Rename")
            rename();
        else if (option == L"Color")
            colour();
        else if (option == L"Ltype")
            linetype();
        else
            changeState(option);
    }

    std::wstring current() const { return recordName(database.clayer()); }

    std::vector<Named> layers(const std::wstring& pattern) {
        AcDbLayerTable* table = nullptr;
        return database.getLayerTable(table) == eOk ? matching(table, pattern) : std::vector<Named>();
    }

    /// Layers by a pattern that the user gives; an empty answer means the current one where it may.
    std::vector<Named> askForLayers(const std::wstring& prompt, const std::wstring& byDefault) {
        std::wstring pattern = line.getLine(prompt);
        if (pattern.empty())
            pattern = byDefault;
        auto found = pattern.empty() ? std::vector<Named>() : layers(pattern);
        if (found.empty() && !pattern.empty())
            editor.console().printLine(L"No matching layer names found.");
        return found;
    }

    void list() {
        std::wstring pattern = line.getLine(L"Enter layer name(s) to list <*>: ");
        if (pattern.empty())
            pattern = L"*";
        for (const Named& layer : layers(pattern)) {
            AcDbLayerTableRecord* record = nullptr;
            if (acdbOpenObject(record, layer.id, AcDb::kForRead) != eOk)
                continue;
            std::wstring state = layerHas(layer.id, LayerState::Frozen) ? L"Frozen"
                                 : layerHas(layer.id, LayerState::Off)  ? L"Off"
                                                                        : L"On";
            if (layerHas(layer.id, LayerState::Locked))
                state += L" Locked";
            editor.console().printLine(L"\"" + layer.name + L"\"  " + state + L"  color " +
                                       std::to_wstring(record->colorIndex()) + L"  linetype \"" +
                                       recordName(record->linetypeObjectId()) + L"\"");
            record->close();
        }
        editor.console().printLine(L"Current layer: \"" + current() + L"\"");
    }

    AcDbObjectId add(const std::wstring& name) {
        AcDbLayerTable* table = nullptr;
        if (database.getLayerTable(table, AcDb::kForWrite) != eOk)
            return {};
        auto record = std::make_unique<AcDbLayerTableRecord>();
        AcDbObjectId id;
        int status = record->setName(name.c_str());
        if (status == eOk)
            status = table->add(id, record.get());
        if (status == eOk)
            record.release()->close(); // the drawing owns it now
        else
            editor.console().printLine(L"Layer \"" + name + L"\" can't be made: " + statusText(status) + L".");
        table->close();
        return id;
    }

    void makeCurrent(AcDbObjectId layer, const std::wstring& name) {
        if (database.setClayer(layer) != eOk)
            editor.console().printLine(L"Layer \"" + name + L"\" is frozen and can't be made current.");
    }

    void make() {
        const std::wstring name =
            line.getLine(L"Enter name for new layer (becomes the current layer) <" + current() + L">: ");
        if (name.empty())
            return;
        AcDbObjectId layer = findLayer(database, name);
        if (layer.isNull())
            layer = add(name);
        if (!layer.isNull())
            makeCurrent(layer, name);
    }

    void set() {
        const std::wstring name = line.getLine(L"Enter layer name to make current <" + current() + L">: ");
        if (name.empty())
            return;
        const AcDbObjectId layer = findLayer(database, name);
        if (layer.isNull())
            editor.console().printLine(L"Cannot find layer \"" + name + L"\".");
        else
            makeCurrent(layer, name);
    }

    void addAll() {
        const std::wstring names = line.getLine(L"Enter name list for new layer(s): ");
        for (std::size_t at = 0; at < names.size();) {
            const auto end = std::min(names.find(L',', at), names.size());
            const std::wstring name = trimmed(names.substr(at, end - at));
            if (!name.empty() && !findLayer(database, name).isNull())
                editor.console().printLine(L"Layer \"" + name + L"\" already exists.");
            else if (!name.empty())
                add(name);
            at = end + 1;
        }
    }

    void rename() {
        const std::wstring old = line.getLine(L"Enter old layer name: ");
        const AcDbObjectId layer = findLayer(database, old);
        if (layer.isNull())
            return editor.console().printLine(L"Cannot find layer \"" + old + L"\".");
        const std::wstring name = line.getLine(L"Enter new layer name: ");
        AcDbLayerTableRecord* record = nullptr;
        int status = acdbOpenObject(record, layer, AcDb::kForWrite);
        if (status == eOk) {
            status = record->setName(name.c_str());
            record->close();
        }
        if (status != eOk)
            editor.console().printLine(L"Layer \"" + old + L"\" can't be renamed: " + statusText(status) + L".");
    }

    template <class Change> void changeEach(const std::vector<Named>& all, Change change) {
        for (const Named& layer : all) {
            AcDbLayerTableRecord* record = nullptr;
            if (acdbOpenObject(record, layer.id, AcDb::kForWrite) != eOk)
                continue;
            change(*record);
            record->close();
        }
    }

    void colour() {
        static const std::vector<const wchar_t*> names = {L"red",  L"yellow",  L"green", L"cyan",
                                                          L"blue", L"magenta", L"white"};
        int index = 0;
        while (index == 0) {
            const std::wstring answer = line.getText(L"Enter color name or number (1-255): ", false);
            if (answer.empty())
                return;
            for (std::size_t at = 0; at < names.size(); ++at) {
                if (equalIgnoringCase(answer, names[at]))
                    index = static_cast<int>(at) + 1;
            }
            if (const auto number = parseWholeNumber(answer); number && *number >= 1 && *number <= 255)
                index = static_cast<int>(*number);
            if (index == 0)
                editor.console().printLine(L"A color number or standard color name is required.");
        }
        changeEach(askForLayers(L"Enter name list of layer(s) for color " + std::to_wstring(index) + L" <" + current() +
                                    L">: ",
                                current()),
                   [index](AcDbLayerTableRecord& layer) { layer.setColorIndex(static_cast<std::uint16_t>(index)); });
    }

    void linetype() {
        std::wstring name = line.getLine(L"Enter loaded linetype name or [?] <Continuous>: ");
        AcDbLinetypeTable* table = nullptr;
        if (name == L"?") {
            if (database.getLinetypeTable(table) == eOk) {
                for (const Named& found : matching(table, L"*"))
                    editor.console().printLine(L"\"" + found.name + L"\"");
            }
            return;
        }
        if (name.empty())
            name = L"Continuous";
        AcDbObjectId found;
        if (database.getLinetypeTable(table) == eOk) {
            if (table->getAt(name.c_str(), found) != eOk)
                found = {};
            table->close();
        }
        if (found.isNull())
            return editor.console().printLine(L"Linetype \"" + name + L"\" is not loaded.");
        changeEach(askForLayers(L"Enter name list of layer(s) for linetype \"" + name + L"\" <" + current() + L">: ",
                                current()),
                   [found](AcDbLayerTableRecord& layer) { layer.setLinetypeObjectId(found); });
    }

    void changeState(const std::wstring& option) {
        struct Meaning {
            const wchar_t* option;
            const wchar_t* words;
            LayerState state;
            bool on;
        };
        static const std::vector<Meaning> meanings = {
            {L"ON", L"turn On", LayerState::Off, false},      {L"OFF", L"turn Off", LayerState::Off, true},
            {L"Freeze", L"Freeze", LayerState::Frozen, true}, {L"Thaw", L"Thaw", LayerState::Frozen, false},
            {L"LOck", L"Lock", LayerState::Locked, true},     {L"Unlock", L"Unlock", LayerState::Locked, false}};
        for (const Meaning& meaning : meanings) {
            if (option != meaning.option)
                continue;
            for (const Named& layer :
                 askForLayers(L"Enter name list of layer(s) to " + std::wstring(meaning.words) + L": ", L"")) {
                if (setLayerState(layer.id, meaning.state, meaning.on) != eOk)
                    editor.console().printLine(L"Cannot freeze layer \"" + layer.name +
                                               L"\". It is the current layer.");
            }
        }
        editor.window().drawingChanged();
    }

    Editor& editor;
    CommandLine& line;
    AcDbDatabase& database;
};

} // namespace

void addLayerCommand(Editor& editor) {
    editor.commands().addOwn(
        {L"EDITOR", L"-LAYER", L"-LAYER", ACRX_CMD_MODAL, [&editor] { LayerCommand(editor).run(); }});
}

} // namespace editor
