#pragma once

#include "tessaro/browser/preview/Preview.h"

#include <optional>
#include <string>

/// One examination in three steps, so that the drawing is read and its pictures are drawn beside the main thread, and
/// the main thread only takes over what was found: TaskFor, Examine, ApplyExamination. ExamineDrawing does all three.

/// What is examined: copies.
struct ExaminationTask {
    std::wstring folder;
    Block block;
    bool showInsPts = true;
    bool useLargeImages = true;
    /// Drawn in place of the points that the bridge gives.
    std::optional<MarkPoints> marks;
    bool keepDrawn = false; ///< for tools that look at the pictures in all their colours
};

/// What was found. Changes to the Block are the differences between `before` and `after`, so that nothing is undone
/// that another room changed meanwhile.
struct Examination {
    Block before;
    Block after;
    bool descriptionPending = false;
    bool complete = false;  ///< not ended early by a lock file, by a drawing that can't be opened, or by an exception
    bool succeeded = false; ///< the bridge succeeded
    MarkPoints points;
    std::optional<SlotPictures> pictures;
    std::optional<Thumbnails> drawn; ///< the same before they were reduced, where the task asks for it
};

/// Main thread while a dialog is open.
ExaminationTask TaskFor(const Directory& directory, const Block& block);

/// Reads and draws. Any thread; touches no record. An exception of the bridge passes, with what was found up to then
/// left in `found`.
void Examine(const ExaminationTask& task, Examination& found);

/// Takes the changes over into the Block, puts the pictures into the Directory's lists, and shows both in the Block's
/// row if the Directory is shown. Main thread while a dialog is open.
void ApplyExamination(Directory& directory, Block& block, const Examination& found);
