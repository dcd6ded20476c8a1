#pragma once

/// The calling thread's share of the machine: as any other, or behind all others for processor and disk. What is
/// lowered here an ordinary user can raise again. A system that refuses leaves the thread as it is.
enum class WorkerPriority { Normal, Lowest };
void SetWorkerPriority(WorkerPriority priority);
