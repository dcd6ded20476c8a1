#pragma once

#include "editor/application/editor.h"
#include "tests/browser/Answers.h"
#include "tests/browser/module/ModuleSymbol.h"
#include "tests/browser/module/Window.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

struct LoaderState;

namespace tests {

/// Picks points, one for each prompt, and then presses Escape until a command has ended.
class PointPicker : public editor::UserInput {
public:
    editor::UserEvent next(const editor::Prompt& prompt) override;
    std::deque<AcGePoint3d> points;
};

/// The module's file, loaded by the real editor from a folder of its own, where its settings and its log lie too. A
/// module stays in its process, so each test needs a process of its own, as ctest gives it.
class LoadedModule : public testing::Test {
protected:
    using Script = std::function<void(Window&)>;

    LoadedModule();
    ~LoadedModule() override;
    void SetUp() override;

    /// A folder of drawings of some bytes that hold nothing more than their version mark, as the catalogue's next
    /// directory. `keys` are lines of its section.
    std::filesystem::path AddFolder(const std::string& description, const std::vector<std::string>& names,
                                    const std::string& mark = "AC1015", const std::string& keys = {});
    /// A drawing with one line from 0,0 to 1,0, and what is shown as its comment.
    static void WriteDrawing(const std::filesystem::path& file, const std::wstring& comments = {});
    /// Lines of the section of all options.
    void AddOption(const std::string& line) { options += line + "\n"; }

    /// Writes the settings and loads the module.
    void Load();
    /// Carries a command out. The first window that it opens is given to the first script, and so on; a script that
    /// leaves its window open has it closed.
    void Run(const std::vector<Script>& scripts, const std::wstring& command = L"TESSARO\n");
    void Browse(const Script& script) { Run({script}); }
    /// Ends the host: the module saves what it keeps.
    void Quit() { host.reset(); }

    /// What the module keeps to itself, by its mangled name.
    template <class T> T& Symbol(const char* name) {
        void* const place = moduleSymbol(reinterpret_cast<void*>(host->linker().modules().front()->entry), name);
        if (place == nullptr)
            throw std::runtime_error(name);
        return *reinterpret_cast<T*>(place);
    }
    std::wstring& PendingOpenPath() { return Symbol<std::wstring>("_Z15pendingOpenPathB5cxx11"); }
    /// Lines that were logged; see `forgetLog`.
    std::vector<std::string> Log() const;
    void ForgetLog() { logStart = AllLog().size(); }
    /// The settings file's text with plain line ends.
    std::string Settings() const;
    std::wstring Current() const { return host->documents().current()->fileName(); }
    std::size_t OpenDrawings() const { return host->documents().all().size(); }
    bool Said(const std::wstring& text) const { return transcript.find(text) != std::wstring::npos; }

    TemporaryFolder folder;
    std::filesystem::path app; ///< the module's folder
    std::wstring transcript;
    PointPicker user;
    std::unique_ptr<editor::Editor> host;

private:
    bool WorkerIsIdle() const;
    std::vector<std::string> AllLog() const;

    LoaderState* worker = nullptr;
    std::string options, paths, sections;
    int directories = 0;
    std::size_t logStart = 0;
};

} // namespace tests
