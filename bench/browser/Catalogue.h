#pragma once

#include "editor/application/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tests/support/TemporaryFolder.h"

#include <vector>

/// A catalogue in memory, and the host that a dialog on it needs. It is the module's catalogue as long as it lives.
class Catalogue {
public:
    Catalogue();
    ~Catalogue();
    Catalogue(const Catalogue&) = delete;
    Catalogue& operator=(const Catalogue&) = delete;

    /// A Directory of that many Blocks that are read; with `files` the Blocks' files are there too, and the Blocks
    /// stand in the order of their names as a scan lists them.
    Directory* Add(int blocks, bool files);

    const tests::TemporaryFolder& Place() const { return place; }

private:
    tests::TemporaryFolder place;
    editor::Editor host;
    int number = 0;
};

/// A Block's name; no two are alike, and they do not come in order.
std::wstring BlockName(int number);
