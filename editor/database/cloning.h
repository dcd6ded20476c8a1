#pragma once

#include "editor/database/database_state.h"

#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace editor {

/// Copies a drawing's model space into a block definition of another drawing, with all that its entities need: records
/// of tables, nested definitions, extension dictionaries, and objects that hang on named dictionaries.
///
/// A record that the destination has under the same name stands for the source's: what exists wins. Objects that are
/// not copied (layouts, groups, reactors that stay behind) leave null references, which are dropped from lists.
/// Nothing enters the destination before commit(), except that handles are used up.
class Cloner {
public:
    Cloner(const AcDbDatabase::Impl& from, AcDbDatabase::Impl& into) : source(from), target(into) {}

    /// Plans the copy of model space for the definition `block` of the destination, which has or will have that name.
    void planModelSpace(dwg::Handle block, std::wstring_view name);
    /// The copies refer to the definition that they are meant for.
    bool isCircular() const { return circular; }
    /// Definitions of the destination that the copies refer to.
    const std::vector<dwg::Handle>& existingDefinitions() const { return existingBlocks; }
    /// Puts the copies in place and gives the handles of the entities for the definition, in their order.
    std::vector<dwg::Handle> commit();

private:
    dwg::Handle plan(const dwg::Object& object);
    dwg::Handle mapped(dwg::Handle handle);
    dwg::Handle decide(const dwg::Object& object);
    dwg::Handle decideRecord(const dwg::Object& object, const std::wstring& name);
    dwg::Handle existingRecord(const dwg::Object& object, std::uint16_t tableType, const std::wstring& name) const;
    /// The counterpart of an object that hangs on a dictionary by a name.
    dwg::Handle decideOwned(const dwg::Object& object, const dwg::Object& owner);
    dwg::Object copyOf(const dwg::Object& object, dwg::Handle handle);
    void setReactors(dwg::Object& copy, const dwg::Object& original) const;

    struct Planned {
        const dwg::Object* object;
        dwg::Handle copy;
    };
    struct TableEntry {
        std::uint16_t tableType;
        dwg::Handle record;
    };
    struct DictionaryEntry {
        dwg::Handle dictionary;
        std::wstring name;
        dwg::Handle object;
    };

    const AcDbDatabase::Impl& source;
    AcDbDatabase::Impl& target;
    dwg::Handle definition = 0;
    std::wstring definitionName;
    bool circular = false;
    /// Of owners that one decision leads to; what lies deeper stays behind.
    int depth = 0;
    /// Handles of the source to handles of the destination; 0 for what stays behind.
    std::unordered_map<dwg::Handle, dwg::Handle> map;
    std::vector<Planned> planned;
    std::unordered_set<dwg::Handle> plannedSources;
    /// Copies of named dictionaries, which begin without entries.
    std::unordered_set<dwg::Handle> emptied;
    std::vector<dwg::Object> copies;
    std::vector<TableEntry> tableEntries;
    std::vector<DictionaryEntry> dictionaryEntries;
    std::vector<dwg::Handle> existingBlocks;
    std::vector<dwg::Handle> definitionEntities;
};

} // namespace editor
