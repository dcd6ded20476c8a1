#pragma once

#include "editor/sdk/rx.h"

#include <memory>
#include <string>
#include <vector>

namespace editor {

class Editor;

/// Loads application modules into the process and passes the editor's messages on to them, in the order of loading.
/// What is loaded stays there until the process ends.
class Linker final : public AcRxDynamicLinker {
public:
    using EntryPoint = int (*)(int message, void* package);

    struct Module {
        std::wstring path;
        EntryPoint entry = nullptr;
        bool severalDocuments = false; ///< it has told so by registerAppMDIAware
        bool initialising = false;
        bool accepted = false; ///< it has taken kInitAppMsg and gets the other messages
    };

    explicit Linker(Editor& editor);
    ~Linker() override;

    bool registerAppMDIAware(void* pkt) override;
    bool loadModule(const wchar_t* fileName, bool printIt, bool asCommand = false) override;
    /// Sends a message to all modules. A module that throws is named on the command line.
    void send(AcRx::AppMsgCode message);
    const std::vector<std::unique_ptr<Module>>& modules() const { return loaded; }

private:
    int deliver(Module& module, AcRx::AppMsgCode message);
    bool refuse(bool printIt, const std::wstring& fileName, const std::wstring& reason);

    Editor& editor;
    std::vector<std::unique_ptr<Module>> loaded;
};

} // namespace editor
