#pragma once

#include "editor/sdk/rx.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace editor {

/// Thrown by a command that can't do its work; the text is shown and the command counts as failed.
struct CommandFailed {
    std::wstring message;
};

struct Command {
    std::wstring group;
    std::wstring globalName; ///< upper case
    std::wstring localName;  ///< upper case
    int flags = ACRX_CMD_MODAL;
    std::function<void()> function;

    bool isSession() const { return (flags & ACRX_CMD_SESSION) != 0; }
    bool isTransparent() const { return (flags & ACRX_CMD_TRANSPARENT) != 0; }
};

/// The editor's own commands and those that applications have added.
///
/// A typed name is looked up among local names; with an underscore in front, among global names; with a full stop in
/// front, among the editor's own commands only. An application's command comes before an own one of the same name.
class CommandStack final : public AcEdCommandStack {
public:
    void addOwn(Command command);
    /// Null where there is none.
    std::shared_ptr<const Command> find(std::wstring_view typed) const;
    std::vector<std::shared_ptr<const Command>> all() const;

    /// eInvalidInput for an empty name or no function, eDuplicateKey for a global name that the group has.
    int addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                   AcRxFunctionPtr function, void* context = nullptr, int functionCode = -1,
                   void* resourceHandle = nullptr) override;
    /// eKeyNotFound for a group that has no commands. A command of it that runs is carried to its end.
    int removeGroup(const wchar_t* group) override;

private:
    std::vector<std::shared_ptr<const Command>> own;
    std::vector<std::shared_ptr<const Command>> added;
};

} // namespace editor
