#pragma once

#include "editor/sdk/status.h"

#include <string>

/// Run-time class of a host object. Classes are compared by identity; isDerivedFrom walks up the parents.
class AcRxClass {
public:
    AcRxClass(const wchar_t* className, const AcRxClass* parentClass) : ownName(className), parent(parentClass) {}
    const wchar_t* name() const { return ownName.c_str(); }
    bool isDerivedFrom(const AcRxClass* other) const;

private:
    std::wstring ownName;
    const AcRxClass* parent;
};

class AcRxObject {
public:
    virtual ~AcRxObject() = default;
    virtual const AcRxClass* isA() const;
    static AcRxClass* desc();
};

class AcRxEventReactor : public AcRxObject {};

namespace AcRx {
enum AppMsgCode {
    kNullMsg = 0,
    kInitAppMsg = 1,
    kUnloadAppMsg = 2,
    kLoadDwgMsg = 3,
    kUnloadDwgMsg = 4,
    kInvkSubrMsg = 5,
    kCfgMsg = 6,
    kEndMsg = 7,
    kQuitMsg = 8,
    kSaveMsg = 9,
};
enum AppRetCode { kRetOK = 0, kRetError = 3 };
} // namespace AcRx

/// What a module exports with C linkage, besides names of its own:
///
///     int acrxEntryPoint(int message, void* package);   // one of AcRx::AppMsgCode; answers one of AcRx::AppRetCode
///     int acrxGetApiVersion();                          // ACRX_API_VERSION
///
/// A module of another version is refused. A loaded module stays in the process until its end.
constexpr int ACRX_API_VERSION = 24;

/// Loads application modules and passes them the host's messages. Main thread only.
class AcRxDynamicLinker : public AcRxObject {
public:
    /// The module that is being initialised (`pkt` is what its kInitAppMsg brought) works with several documents.
    virtual bool registerAppMDIAware(void* pkt) = 0;
    /// Loads a module by file name (searched on the support path unless a full path) and sends it kInitAppMsg; when a
    /// drawing is open, kLoadDwgMsg right after. With `printIt` a failure is told on the command line.
    virtual bool loadModule(const wchar_t* fileName, bool printIt, bool asCommand = false) = 0;
};

constexpr int ACRX_CMD_MODAL = 0;
constexpr int ACRX_CMD_TRANSPARENT = 1;
constexpr int ACRX_CMD_SESSION = 0x200000;

using AcRxFunctionPtr = void (*)();

/// The commands that applications add. A command is known by its global name and its local name; both ignore case.
class AcEdCommandStack : public AcRxObject {
public:
    virtual int addCommand(const wchar_t* group, const wchar_t* globalName, const wchar_t* localName, int flags,
                           AcRxFunctionPtr function, void* context = nullptr, int functionCode = -1,
                           void* resourceHandle = nullptr) = 0;
    virtual int removeGroup(const wchar_t* group) = 0;
};

/// What an application is told of the commands of the user. Names are global names in upper case. Main thread only.
class AcEditorReactor : public AcRxEventReactor {
public:
    virtual void commandEnded(const wchar_t*) {}
    virtual void commandCancelled(const wchar_t*) {}
    virtual void commandFailed(const wchar_t*) {}
    virtual void commandWillStart(const wchar_t*) {}
};

class AcEditor : public AcRxObject {
public:
    /// The reactor is not owned and must be removed before it dies.
    virtual void addReactor(AcEditorReactor* reactor) = 0;
    virtual void removeReactor(AcEditorReactor* reactor) = 0;
};

constexpr const wchar_t* ACRX_DYNAMIC_LINKER = L"DynamicLinker";
constexpr const wchar_t* ACRX_COMMAND_DOCK = L"ACAD_REGISTERED_COMMANDS";
constexpr const wchar_t* ACED_EDITOR_OBJECT = L"AcEditor";

class AcRxSysRegistry {
public:
    virtual ~AcRxSysRegistry() = default;
    /// The object of that name ("DynamicLinker", "ACAD_REGISTERED_COMMANDS", "AcEditor"), or null.
    virtual AcRxObject* at(const wchar_t* name) = 0;
};

/// The host's registry; null while no editor runs in the process.
AcRxSysRegistry* acrxSysRegistry();
