#include "editor/sdk/rx.h"
#include "tessaro/host/entry/Border.h"
#include "tessaro/host/entry/Exports.h"
#include "tessaro/host/entry/Lifecycle.h"

int acrxEntryPoint(int msg, void* pkt) {
    EndAtBorder(L"acrxEntryPoint", [&] {
        switch (msg) {
        case AcRx::kInitAppMsg:
            OnInitApp(pkt);
            break;
        case AcRx::kLoadDwgMsg:
            OnLoadDrawing();
            break;
        case AcRx::kUnloadDwgMsg:
            OnUnloadDrawing();
            break;
        case AcRx::kQuitMsg:
            OnQuit();
            break;
        default:
            break;
        }
    });
    return AcRx::kRetOK;
}

int acrxGetApiVersion() {
    return ACRX_API_VERSION;
}
