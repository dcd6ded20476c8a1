#pragma once

#include <functional>

/// The hand-over from any thread to the main thread: one queue of blocking calls.
///
/// The worker, the finisher and the delete thread reach everything that belongs to the main thread through Call, and so
/// the main thread must never wait for them otherwise than in ServeUntil or in its event loop.
namespace platform {

/// Names the calling thread as the main thread (done once, by the module's initialisation; again by tests). Until then
/// it is the thread that loaded this code.
void SetMainThread();
bool IsMainThread();

/// Carries the function out on the main thread and waits for it. On the main thread itself: at once. An exception of
/// the function is thrown on the caller's side.
void CallOnMainThread(const std::function<void()>& function);

/// Carries out what is waiting at this moment, on the main thread; called by its event loop after each wake-up. Calls
/// may nest: one that runs an event loop of its own lets the next ones be served inside it.
void ServeMainThreadCalls();
/// Serves calls on the main thread until the condition holds; the condition is tested after each call and whenever
/// WakeMainThread is called.
void ServeMainThreadUntil(const std::function<bool()>& condition);
void WakeMainThread();

/// What makes the main thread's event loop call ServeMainThreadCalls soon; called from any thread, without the queue's
/// lock, and here at once where calls are waiting; it must not wait for anything. A null function stands for no event
/// loop. Returns when no other thread is inside an earlier function any more.
void SetMainThreadWakeUp(std::function<void()> wakeUp);

} // namespace platform
