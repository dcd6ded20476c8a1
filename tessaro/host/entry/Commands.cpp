#include "tessaro/host/entry/Commands.h"

#include "editor/sdk/documents.h"
#include "editor/sdk/editor.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/host/Log.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Border.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"

#include <QApplication>

#include <array>
#include <memory>

namespace {

AcApDocument* FindDocument(const std::wstring& path) {
    const std::unique_ptr<AcApDocumentIterator> iterator(acDocManagerPtr()->newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step()) {
        AcApDocument* const document = iterator->document();
        if (platform::EqualNoCase(document->fileName(), path))
            return document;
    }
    return nullptr;
}

/// The host's resource handle, for the time that it opens a drawing.
class ResourceHandleScope {
public:
    ResourceHandleScope() { acDocManagerPtr()->pushResourceHandle(); }
    ~ResourceHandleScope() { acDocManagerPtr()->popResourceHandle(); }
    ResourceHandleScope(const ResourceHandleScope&) = delete;
    ResourceHandleScope& operator=(const ResourceHandleScope&) = delete;
};

} // namespace

void TessaroCommand() {
    EndAtBorder(L"TESSARO", RunBrowser);
}

void OpenCommand() {
    EndAtBorder(L"NORVANETESSAROOPEN", TESSAROOpen);
}

void RunBrowser() {
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
        Log(L"No window system\n"); // a host that runs without one: a window would end the process
        return;
    }
    if (BlockDlg::IsUp())
        return; // the dialog is modal to the host: a second one could only be started around it
    Log(L"Construct dialog\n");
    BlockDlg dialog(static_cast<QWidget*>(adsw_acadMainWnd()));
    Log(L"DoModal\n");
    dialog.DoModal();
}

void TESSAROOpen() {
    if (pendingOpenPath.empty())
        return;
    Log(L"TESSAROOpen, iterate documents\n");
    AcApDocument* const document = FindDocument(pendingOpenPath);
    const bool applicationContext = acDocManagerPtr()->isApplicationContext();
    if (document != nullptr) {
        // The path stays pending here, other than after an opening.
        if (applicationContext)
            ActivateDocument(document);
        else
            acDocManagerPtr()->executeInApplicationContext(
                [](void* data) {
                    EndAtBorder(L"ActivateDocument", [data] { ActivateDocument(static_cast<AcApDocument*>(data)); });
                },
                document);
        return;
    }
    if (applicationContext)
        DoOpen(pendingOpenPath);
    pendingOpenPath.clear();
    Log(L"TESSAROOpen done\n");
}

int ActivateDocument(AcApDocument* document) {
    Log(L"activateDocument\n");
    return acDocManagerPtr()->activateDocument(document, true);
}

void DoOpen(const std::wstring& path) {
    Log(L"DoOpen\n");
    {
        const ResourceHandleScope scope;
        acDocManagerPtr()->appContextOpenDocument(path.c_str());
    }
    Log(L"DoOpen done\n");
}

int TessaroFunction() {
    RunBrowser();
    acedRetVoid();
    return 1;
}

int FindBlockFunction() {
    std::array<wchar_t, 133> name{};
    const int result = acedGetString(1, L"Enter a block name: ", name.data(), name.size());
    acedRetVoid();
    if (result == RTNORM && FindAndInsertBlock(name.data()) == 0)
        RunBrowser();
    return 1;
}
