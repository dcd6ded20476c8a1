#include "editor/application/reactors.h"

#include "editor/application/console.h"
#include "editor/application/text.h"

#include <algorithm>
#include <exception>

namespace editor {

Reactors::Reactors(Console& theConsole) : console(theConsole) {}

void Reactors::addReactor(AcEditorReactor* reactor) {
    if (reactor != nullptr && std::find(reactors.begin(), reactors.end(), reactor) == reactors.end())
        reactors.push_back(reactor);
}

void Reactors::removeReactor(AcEditorReactor* reactor) {
    std::erase(reactors, reactor);
}

void Reactors::commandWillStart(const std::wstring& name) {
    tell([&name](AcEditorReactor& reactor) { reactor.commandWillStart(name.c_str()); });
}

void Reactors::commandEnded(const std::wstring& name) {
    tell([&name](AcEditorReactor& reactor) { reactor.commandEnded(name.c_str()); });
}

void Reactors::commandCancelled(const std::wstring& name) {
    tell([&name](AcEditorReactor& reactor) { reactor.commandCancelled(name.c_str()); });
}

void Reactors::commandFailed(const std::wstring& name) {
    tell([&name](AcEditorReactor& reactor) { reactor.commandFailed(name.c_str()); });
}

void Reactors::tell(const std::function<void(AcEditorReactor&)>& event) {
    for (AcEditorReactor* const reactor : std::vector(reactors)) {
        if (std::find(reactors.begin(), reactors.end(), reactor) == reactors.end())
            continue;
        try {
            event(*reactor);
        } catch (const std::exception& error) {
            console.printFault(L"A reactor failed: " + fromNarrow(error.what()));
        } catch (...) {
            console.printFault(L"A reactor failed by an exception of no known kind.");
        }
    }
}

} // namespace editor
