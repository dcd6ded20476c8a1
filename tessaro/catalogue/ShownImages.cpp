#include "tessaro/catalogue/ShownImages.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/BrowserWindow.h"
#include "tessaro/host/ModuleState.h"

namespace {

struct Shown {
    const Directory* directory = nullptr;
    const ImageList* large = nullptr; ///< the lists that the window was given
    const ImageList* small = nullptr;
};
Shown shown;

} // namespace

void AttachImages(BrowserWindow& window, const Directory* directory) {
    shown =
        directory == nullptr ? Shown{} : Shown{directory, directory->largeImages.get(), directory->smallImages.get()};
    window.SetBlockImages(shown.large, shown.small);
}

void ReleaseImages(const Directory& directory) {
    if (shown.directory != &directory)
        return;
    shown = {};
    if (BrowserWindow* window = theBlockDlg)
        window->SetBlockImages(nullptr, nullptr);
}

void FreeImages(Directory& directory) {
    ReleaseImages(directory);
    directory.ResetImageLists(true);
}

AttachedImagesScope::AttachedImagesScope(const Directory& written)
    : directory(written), attached(shown.directory == &written) {}

AttachedImagesScope::~AttachedImagesScope() {
    if (!attached || (shown.large == directory.largeImages.get() && shown.small == directory.smallImages.get()))
        return;
    if (BrowserWindow* window = theBlockDlg)
        AttachImages(*window, &directory);
}
