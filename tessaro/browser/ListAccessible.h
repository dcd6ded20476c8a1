#pragma once

/// Tells assistive programs of the rows of every ListView: a table of cells, each with its whole text as name, its
/// meaning as description, and its state. Repeated calls do nothing. Main thread.
void InstallListAccessibility();
