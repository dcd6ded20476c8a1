#pragma once

#include "editor/sdk/db.h"

class AcApDocument {
public:
    virtual ~AcApDocument() = default;
    /// Full path of the drawing, or "Drawing%d.dwg" for one that was never saved.
    virtual const wchar_t* fileName() const = 0;
    virtual AcDbDatabase* database() const = 0;
};

class AcApDocumentIterator {
public:
    virtual ~AcApDocumentIterator() = default;
    virtual bool done() const = 0;
    virtual void step() = 0;
    virtual AcApDocument* document() const = 0;
};

namespace AcAp {
enum DocLockMode { kNone = 0, kAutoWrite = 1, kNotLocked = 2, kWrite = 4, kRead = 0x14, kXWrite = 0x20 };
}

/// The host's documents. Main thread only, except where `platform/` brings a call there.
class AcApDocManager {
public:
    virtual ~AcApDocManager() = default;
    virtual AcApDocument* curDocument() const = 0;
    virtual AcApDocument* mdiActiveDocument() const = 0;
    /// Owned by the caller.
    virtual AcApDocumentIterator* newAcApDocumentIterator() = 0;
    virtual bool isApplicationContext() const = 0;
    virtual int activateDocument(AcApDocument* document, bool passFocus = false) = 0;
    virtual void executeInApplicationContext(void (*function)(void*), void* data) const = 0;
    virtual int appContextOpenDocument(const wchar_t* file) = 0;
    virtual int lockDocument(AcApDocument* document, AcAp::DocLockMode mode = AcAp::kWrite) = 0;
    virtual int unlockDocument(AcApDocument* document) = 0;
    virtual void pushResourceHandle() = 0;
    virtual void popResourceHandle() = 0;
    /// Queues text on the document's command line; it runs after the present command and notification have returned.
    virtual int sendStringToExecute(AcApDocument* document, const wchar_t* text, bool activate = true,
                                    bool wrapUpInactiveDoc = false, bool echoString = true) = 0;
};

/// Null while no editor runs in the process.
AcApDocManager* acDocManagerPtr();
