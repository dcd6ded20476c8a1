#include "tessaro/catalogue/DirectorySection.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/MainCache.h"
#include "tessaro/catalogue/OptionsSection.h"
#include "tessaro/catalogue/SchemeSection.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Paths.h"

namespace {

/// What is written, as it stood at one moment.
struct SavedState {
    std::wstring file;
    OptionValues options;
    std::vector<DirectorySettings> directorySettings;
    std::vector<NamedScheme> namedSchemes;
};

SavedState CurrentState() {
    SavedState state{iniPath, CurrentOptions(), {}, {}};
    for (const Directory* directory : directories)
        state.directorySettings.push_back(*directory);
    for (const auto& [name, scheme] : schemes)
        state.namedSchemes.emplace_back(name, *scheme);
    return state;
}

bool IsWritable(const std::wstring& file) {
    const auto status = platform::GetFileStatus(file);
    return !status || status->created == -1 || !status->readOnly;
}

} // namespace

void SaveIni(bool final) {
    SavedState state;
    platform::CallOnMainThread([&] { state = CurrentState(); });
    const std::wstring& file = state.file;
    // The image is made anew, which fixes the file's order and drops every key that is not known.
    ForgetIniFile(file);
    if (IsWritable(file)) {
        WriteOptions(state.options, file);
        WritePaths(state.directorySettings, file);
        for (const DirectorySettings& settings : state.directorySettings)
            WriteDirectorySection(settings, file);
        WriteSchemes(state.namedSchemes, file);
    }
    if (final) {
        platform::CallOnMainThread(DeleteSchemes);
        // Ahead of the settings, whose write time it notes: that of the last save.
        platform::CallOnMainThread(WriteMainCache);
    }
    WriteIniFile(file, state.options.backupIni != 0);
}
