// entry_recorder MODULE STEP...: a step is the number of a message, "version", "command NAME",
// which runs a command that was added, "refuse commands", which has the command stack take none from there on,
// "ribbon" and "toolbar", which give the host one, "setup toolbar", which calls the module's export of that name,
// "load FILE", which another application does, or "loaded NAME", which tells whether an object of that path is there.
#include "tests/entry/recorder/RecorderHost.h"

#include <dlfcn.h>
#include <iostream>

namespace {

using EntryPoint = int (*)(int, void*);
using Query = int (*)();

std::wstring Widen(const std::string& text) {
    return {text.begin(), text.end()};
}

int Fail(const std::string& reason) {
    std::cout << "failed: " << reason << std::endl;
    return 1;
}

} // namespace

int main(int count, char** arguments) {
    if (count < 2)
        return Fail("no module");
    void* const module = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr)
        return Fail(dlerror());
    const auto entry = reinterpret_cast<EntryPoint>(dlsym(module, "acrxEntryPoint"));
    const auto version = reinterpret_cast<Query>(dlsym(module, "acrxGetApiVersion"));
    if (entry == nullptr || version == nullptr)
        return Fail("no entry point");
    for (int place = 2; place < count; ++place) {
        const std::string step = arguments[place];
        if (step == "version") {
            Tell(L"version " + std::to_wstring(version()));
        } else if (step == "refuse commands") {
            commandsAreRefused = true;
        } else if (step == "ribbon") {
            hasRibbon = true;
        } else if (step == "toolbar") {
            hasToolbar = true;
        } else if (step == "setup toolbar") {
            const auto setup = reinterpret_cast<Query>(dlsym(module, "NorvaneSetupToolbar"));
            if (setup == nullptr)
                return Fail("no such export");
            Tell(L"result " + std::to_wstring(setup()));
        } else if (step.rfind("load ", 0) == 0) {
            if (dlopen(step.c_str() + 5, RTLD_NOW | RTLD_LOCAL) == nullptr)
                return Fail(dlerror());
        } else if (step.rfind("loaded ", 0) == 0) {
            const bool loaded = dlopen(step.c_str() + 7, RTLD_LAZY | RTLD_NOLOAD) != nullptr;
            Tell(loaded ? L"loaded" : L"not loaded");
        } else if (step.rfind("command ", 0) == 0) {
            const auto command = addedCommands.find(Widen(step.substr(8)));
            if (command == addedCommands.end())
                return Fail("no such command");
            command->second();
            Tell(L"done");
        } else {
            int package = 0;
            void* const pkt = step == "1" ? reinterpret_cast<void*>(42) : &package;
            Tell(L"answer " + std::to_wstring(entry(std::stoi(step), pkt)));
        }
    }
    return 0;
}
