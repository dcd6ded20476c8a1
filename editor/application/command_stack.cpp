#include "editor/application/command_stack.h"

#include "editor/application/text.h"

#include <algorithm>

namespace editor {

void CommandStack::addOwn(Command command) {
    own.push_back(std::make_shared<const Command>(std::move(command)));
}

std::shared_ptr<const Command> CommandStack::find(std::wstring_view typed) const {
    bool ownOnly = false, global = false;
    while (!typed.empty() && (typed[0] == L'.' || typed[0] == L'_')) {
        (typed[0] == L'.' ? ownOnly : global) = true;
        typed.remove_prefix(1);
    }
    const std::wstring name = upperCased(typed);
    const auto named = [&](const std::shared_ptr<const Command>& command) {
        return name == (global ? command->globalName : command->localName);
    };
    if (!ownOnly) {
        if (const auto found = std::find_if(added.begin(), added.end(), named); found != added.end())
            return *found;
    }
    const auto found = std::find_if(own.begin(), own.end(), named);
    return found != own.end() ? *found : nullptr;
}

std::vector<std::shared_ptr<const Command>> CommandStack::all() const {
    auto commands = own;
    commands.insert(commands.end(), added.begin(), added.end());
    return commands;
}

int CommandStack::addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                             AcRxFunctionPtr function, void*, int, void*) {
    const auto given = [](const wchar_t* name) { return name != nullptr && *name != 0; };
    if (!given(group) || !given(globalName) || !given(localName) || function == nullptr)
        return Acad::eInvalidInput;
    Command command{group, upperCased(globalName), upperCased(localName), flags, function};
    const bool duplicate = std::any_of(added.begin(), added.end(), [&](const auto& other) {
        return equalIgnoringCase(other->group, command.group) && other->globalName == command.globalName;
    });
    if (duplicate)
        return Acad::eDuplicateKey;
    added.push_back(std::make_shared<const Command>(std::move(command)));
    return eOk;
}

int CommandStack::removeGroup(const wchar_t* group) {
    if (group == nullptr)
        return Acad::eInvalidInput;
    const auto removed =
        std::erase_if(added, [group](const auto& command) { return equalIgnoringCase(command->group, group); });
    return removed != 0 ? eOk : Acad::eKeyNotFound;
}

} // namespace editor
