#pragma once

#include "tessaro/browser/painting/PrinterContext.h"

class Directory;
struct Block;

/// One row of the block list.
struct PrintRow {
    Block* block = nullptr;
    int slot = 0; ///< of the list's pictures
};

/// What a print takes from the browser window. Main thread.
class PrintWindow {
public:
    virtual ~PrintWindow() = default;
    virtual int RowCount() const = 0;
    virtual PrintRow Row(int row) const = 0;
    /// Null for none.
    virtual const ImageList* Pictures() const = 0;

    /// The progress window, which only shows: positions run from 0 to the range.
    virtual void OpenProgress(int range) = 0;
    virtual void SetProgress(int position) = 0;
    virtual void CloseProgress() = 0;
};

/// Prints the blocks of the current directory, in the order of the block list, as a catalogue sheet: rows for
/// `printType` 0, a grid for 1, for any other value a blank page. All measures are pixels of the device, so that the
/// size on paper follows its resolution; a picture takes `printScale` times 130 by 96 of them.
///
/// A document that can't be begun ends it with a message. Throws where the bridge's helper is missing.
void PrintCatalogue(PrinterContext& dc, PrintWindow& window);

/// Draws the band at the head of a page with the version and the text, and moves `y` below it.
void PrintHeader(PrinterContext& dc, const std::wstring& text, std::int64_t& x, std::int64_t& y);
