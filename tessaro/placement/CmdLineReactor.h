#pragma once

#include "editor/sdk/rx.h"

/// Watches the host's commands end and carries a placement on: explodes what was placed, inserts again, reopens the
/// browser, restores the current layer, takes an unused definition out after a cancel. The only place where a placement
/// ends. Holds nothing itself: its state is `placement`. Main thread; a notification only queues texts.
class CmdLineReactor : public AcEditorReactor {
public:
    void commandEnded(const wchar_t* command) override;
    void commandCancelled(const wchar_t* command) override;
    void commandFailed(const wchar_t* command) override;
};

extern CmdLineReactor cmdLineReactor;

/// What explodes the reference that was placed last, by the name of the host's executable.
const wchar_t* ExplodeText(const wchar_t* executable);
