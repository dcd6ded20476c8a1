#include "editor/sdk/documents.h"
#include "editor/sdk/editor.h"

#include <stdexcept>

namespace {

void askForColour() {
    resbuf* const list = acutNewRb(RTSTR);
    acutNewString(L"acad_colordlg", list->resval.rstring);
    list->rbnext = acutNewRb(RTSHORT);
    list->rbnext->resval.rint = 7;
    list->rbnext->rbnext = acutNewRb(RTNIL);
    resbuf* result = nullptr;
    if (acedInvoke(list, &result) == RTNORM && result != nullptr)
        acutPrintf(L"colour %d\n", result->resval.rint);
    else
        acutPrintf(L"no colour\n");
    acutRelRb(result);
    acutRelRb(list);
}

} // namespace

// Prints every message that it gets, with the drawing that is current then.
extern "C" int acrxEntryPoint(int message, void* package) {
    const AcApDocument* const document = acDocManagerPtr()->curDocument();
    acutPrintf(L"message %d with %s\n", message, document != nullptr ? document->fileName() : L"no drawing");
#ifdef TEMPER_REFUSES
    return AcRx::kRetError;
#endif
#ifdef TEMPER_THROWS
    if (message == AcRx::kLoadDwgMsg)
        throw std::runtime_error("no room for drawings");
#endif
    auto* const linker = dynamic_cast<AcRxDynamicLinker*>(acrxSysRegistry()->at(ACRX_DYNAMIC_LINKER));
    const bool registered = linker->registerAppMDIAware(package);
    if (message == AcRx::kInitAppMsg) {
        auto* const commands = dynamic_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
        commands->addCommand(L"RECORDING", L"RECORDINGHELLO", L"RECORDINGHELLO", ACRX_CMD_MODAL,
                             [] { acutPrintf(L"hello from the module\n"); });
        commands->addCommand(L"RECORDING", L"COLOUR", L"COLOUR", ACRX_CMD_MODAL, askForColour);
        acutPrintf(registered ? L"several drawings\n" : L"one drawing\n");
    } else if (registered) {
        acutPrintf(L"registered too late\n");
    }
    return AcRx::kRetOK;
}

#ifdef TEMPER_OTHER_RELEASE
extern "C" int acrxGetApiVersion() {
    return ACRX_API_VERSION - 1;
}
#elif !defined(TEMPER_NO_VERSION)
extern "C" int acrxGetApiVersion() {
    return ACRX_API_VERSION;
}
#endif
