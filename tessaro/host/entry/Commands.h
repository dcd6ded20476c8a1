#pragma once

#include <string>

class AcApDocument;

/// Handlers of the two commands, for the host's command stack.
void TessaroCommand();
void OpenCommand();

/// Runs the browser dialog and, at its end, the placement that the user chose. Main thread, document context.
void RunBrowser();
/// Opens or activates the drawing of `pendingOpenPath`. Main thread, application context.
void TESSAROOpen();
void DoOpen(const std::wstring& path);
int ActivateDocument(AcApDocument* document);

/// Callable by the host, bound to nothing: the browser, and the insertion of a block by its name. Each gives 1.
int TessaroFunction();
int FindBlockFunction();
