#pragma once

#include "editor/sdk/rx.h"

#include <functional>
#include <string>
#include <vector>

namespace editor {

class Console;

/// The editor object of the registry: tells its reactors what commands do, in the order in which they were added. A
/// reactor may add and remove reactors, itself too: one that is removed hears nothing more, one that is added hears of
/// the next event on. An exception of a reactor is printed, and the others are told all the same.
class Reactors final : public AcEditor {
public:
    explicit Reactors(Console& console);

    /// Adding a reactor that is there already does nothing.
    void addReactor(AcEditorReactor* reactor) override;
    void removeReactor(AcEditorReactor* reactor) override;

    void commandWillStart(const std::wstring& name);
    void commandEnded(const std::wstring& name);
    void commandCancelled(const std::wstring& name);
    void commandFailed(const std::wstring& name);

private:
    void tell(const std::function<void(AcEditorReactor&)>& event);

    Console& console;
    std::vector<AcEditorReactor*> reactors;
};

} // namespace editor
