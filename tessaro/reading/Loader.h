#pragma once

#include <chrono>
#include <cstdint>
#include <string>

class Directory;

/// The worker of one opening of the dialog, its queue, and what ends it.
///
/// The worker and the short threads beside it reach the records and the window inside platform::CallOnMainThread only.
/// The main thread waits for none of them, but in WaitForLastClose, where it serves their calls.

/// How long the loader's threads wait before they look again.
struct LoaderWaits {
    std::chrono::milliseconds kick{500};       ///< for `kickevent`
    std::chrono::milliseconds deletePoll{125}; ///< between two looks at `pause`
};
/// The waits of the threads that are started without others of their own; a long run may want shorter ones. Main
/// thread.
LoaderWaits UsualLoaderWaits();
void SetUsualLoaderWaits(LoaderWaits waits);

/// Thread function of the worker; gives 0. An exception other than CheckPause's ends the loop and is logged; `quitdone`
/// is set all the same.
int LoopLoadDir(LoaderWaits waits = UsualLoaderWaits());
/// Starts a worker. Main thread.
void StartLoader(LoaderWaits waits = UsualLoaderWaits());
/// Marks everything for checking and fills the queue, current directory first. Main thread.
void ValidateDirs();
/// Puts a Directory at the head of the queue and interrupts the worker. Any thread.
void QueueFirst(Directory* directory);
/// Makes a Directory the current one and has it read first. Main thread.
void ShowDirectory(Directory* directory);
/// Puts the current directory, no longer `loaded`, at the head of the queue without an interruption, where a dialog is
/// open and there is one. Main thread.
void RequeueCurrentDirectory();
/// Asks the worker to end and starts the finisher, which waits for it, runs FinishClose and clears `quit`. Any thread.
void StopLoader();
/// The last steps of closing. Finisher thread.
void FinishClose();
/// Throws 1 on a raised `pause`, 2 with `quit` set. Worker.
void CheckPause();
/// Starts the thread that deletes the Directory of a row. Main thread.
void StartDeleteDirectory(int row, LoaderWaits waits = UsualLoaderWaits());
/// Thread function of the delete path: waits until the worker has noticed the change of directory, or has ended, and
/// removes the Directory with its row and its cache file.
void DeleteDirectory(Directory* directory, int row, LoaderWaits waits = UsualLoaderWaits());
/// Waits, serving calls, until the last finisher and delete thread are gone. Main thread, before a dialog is made.
void WaitForLastClose();

/// Brings one Directory up to date: 0 when it stopped early, 123 when it went through. Throws what CheckPause throws;
/// what was done by then stays. Worker.
std::int32_t LoadDir(Directory* directory);

/// A new folder at the end of the catalogue, selected. Main thread.
void AddDirectory(const std::wstring& path);
/// Replaces a Directory by an empty copy with its settings and reads it anew. The old object lives on until its last
/// user has left it. Main thread.
void ReloadDirectory(Directory* directory);
