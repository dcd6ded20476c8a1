#pragma once

struct Block;
class Directory;

/// Examines the drawing of a Block beside the main thread, applies what was found there, and marks the Block examined
/// whatever came of it. An exception of the examination passes, with what was found by then applied and the Block
/// unmarked. Worker.
void ExamineBlock(Directory& directory, Block& block);
