#pragma once

class Directory;

/// Brings the Blocks of a Directory in line with the files of its folder, or with the block definitions of the current
/// drawing for an internal one: a first scan where it has no Blocks, a rescan where it is not `loaded`, else nothing.
/// False where the folder shows no drawing: all stays as it was. Runs to its end without an interruption. Worker.
bool ScanDirectory(Directory& directory);
