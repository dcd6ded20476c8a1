#pragma once

#include "tessaro/reading/Examination.h"

#include <deque>

/// The next Blocks of a Directory to be examined, in their order: as many as travel between worker and main thread at
/// once.
class Examinations {
public:
    explicit Examinations(Directory& examined) : directory(examined) {}

    bool Empty() const { return waiting.empty(); }
    /// One Block of a Directory that is shown, so that its row follows at once. Main thread.
    bool Full() const;
    /// Main thread.
    void Add(Block& block);

    /// Examines them, up to a raised `pause`. An exception of an examination passes, with what was found by then
    /// applied and its Block unmarked. Worker.
    void Run();
    /// Applies what was found to the Blocks that were examined, marks them so, whatever came of it, and takes them out.
    /// False where the Directory was left meanwhile with its pictures in its file only: the new ones are to join them.
    /// Main thread.
    bool Apply();

private:
    struct Entry {
        Block& block;
        ExaminationTask task;
        Examination found;
        bool examined = false;
    };

    void ApplyUnfinished(Entry& entry);

    Directory& directory;
    std::deque<Entry> waiting;
};
