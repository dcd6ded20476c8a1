#pragma once

#include "editor/application/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <vector>

/// Drawings of the large library: TESSARO_LOAD_COUNT of the environment, else 100,000.
int DrawingCount();
/// Its folders, of 200 drawings each, made at the first call and kept between runs beside the programs.
const std::vector<std::filesystem::path>& LibraryFolders();

/// The module's catalogue over folders of the large library, settings and caches in a folder of their own, and the host
/// that a dialog on it needs. Nothing of it is read yet.
class LargeCatalogue {
public:
    /// The first so many folders.
    explicit LargeCatalogue(std::size_t folders);
    ~LargeCatalogue();
    LargeCatalogue(const LargeCatalogue&) = delete;
    LargeCatalogue& operator=(const LargeCatalogue&) = delete;

    /// Empties memory; the files stay.
    static void Forget();

private:
    const tests::TemporaryFolder place;
    editor::Editor host;
};

/// Carries the work out on a thread of its own while the calling one serves as main thread.
void OnWorker(const std::function<void()>& work);

double Seconds();
double MegabytesInMemory();
