#pragma once

#include <string>

class Directory;

/// The worker of one opening of the dialog and its queue.

/// Thread function of the worker; gives 0.
int LoopLoadDir();
/// Starts a worker.
void StartLoader();
/// Marks everything for checking and fills the queue, current directory first. Main thread.
void ValidateDirs();
void QueueFirst(Directory* directory);
void ShowDirectory(Directory* directory);
/// Asks the worker to end and starts the finisher, which waits for it and runs FinishClose.
void StopLoader();
void FinishClose();
/// Throws 1 on a raised `pause`, 2 with `quit` set.
void CheckPause();
/// Thread function of the delete path.
void DeleteDirectory(int row);
/// Main thread, inside an opening: waits, serving calls, until the last finisher and delete thread are gone.
void WaitForLastClose();

/// Brings one Directory up to date: 0 when it stopped early, 123 when it went through. Throws what CheckPause throws.
int LoadDir(Directory* directory);

/// A new folder at the end of the catalogue, selected. Main thread.
void AddDirectory(const std::wstring& path);
/// Replaces a Directory by an empty copy with its settings and reads it anew. Main thread.
void ReloadDirectory(Directory* directory);
