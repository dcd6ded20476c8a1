#include "tessaro/catalogue/CacheMessages.h"

#include "editor/sdk/editor.h"
#include "tessaro/host/Log.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/UserInterface.h"

void PrintOnCommandLine(const wchar_t* text) {
    platform::CallOnMainThread([text] { acutPrintf(L"%s", text); });
}

void TellInvalidMainCache(const platform::FileException& exception) {
    platform::MessageBox(exception.ErrorText());
    Log(L"CFileException: %x\n", static_cast<unsigned>(exception.cause));
    PrintOnCommandLine(kInvalidByFile);
}

void TellInvalidMainCache(const platform::ArchiveException& exception) {
    platform::MessageBox(exception.ErrorText());
    Log(L"CArchiveException: %x\n", static_cast<unsigned>(exception.cause));
    if (exception.cause == platform::ArchiveException::badSchema)
        platform::MessageBox(L"Removing old cache file due to a new version.\n"
                             L"Please allow all directories will re-build for best performance.",
                             L"Tessaro", platform::MessageButtons::Ok, platform::MessageIcon::Exclamation);
    else
        PrintOnCommandLine(kInvalidByArchive);
}
