// The scheme box and the list of schemes.
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/dialogs/SchemePrefs.h"
#include "tessaro/reading/DirectoryUsers.h"

void BlockDlg::OnSchemes() {
    StoreDlgState();
    const Directory* const directory = currentDirectory;
    const HeldDirectory held(directory);
    SchemePrefs(this).DoModal();
    QComboBox& box = *controls->scheme;
    box.clear();
    AddScheme(L"<None>");
    box.setCurrentIndex(0);
    for (const auto& [name, scheme] : schemes) {
        AddScheme(name);
        if (directory != nullptr && name == directory->schemeName)
            box.setCurrentIndex(box.findText(ToQt(name), Qt::MatchExactly | Qt::MatchCaseSensitive));
    }
}
