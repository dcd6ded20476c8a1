#include "tessaro/catalogue/CacheMessages.h"

#include "editor/sdk/editor.h"
#include "tessaro/platform/MainThread.h"

void PrintOnCommandLine(const wchar_t* text) {
    platform::CallOnMainThread([text] { acutPrintf(L"%s", text); });
}
