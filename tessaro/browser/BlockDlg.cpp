#include "tessaro/browser/BlockDlg.h"

#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/browser/ComboAccessible.h"
#include "tessaro/browser/DialogLayout.h"
#include "tessaro/browser/ErrorReport.h"
#include "tessaro/browser/ListAccessible.h"
#include "tessaro/browser/MainThreadLoop.h"
#include "tessaro/browser/QtText.h"
#include "tessaro/browser/QuickPic.h"
#include "tessaro/browser/SmallDialogs.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/dialogs/NewMap.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/Text.h"
#include "tessaro/platform/UserInterface.h"
#include "tessaro/reading/DirectoryUsers.h"
#include "tessaro/reading/Loader.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QScreen>

#include <algorithm>

std::atomic<bool> closeArmed{false};

namespace {

constexpr int kCloseCommand = 248;

/// A command that was posted to the window.
class CommandEvent : public QEvent {
public:
    explicit CommandEvent(int command) : QEvent(Kind()), id(command) {}
    static QEvent::Type Kind() {
        static const auto kind = static_cast<QEvent::Type>(QEvent::registerEventType());
        return kind;
    }
    const int id;
};

} // namespace

BlockDlg::BlockDlg(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowCloseButtonHint) {
    setObjectName(QStringLiteral("BlockDlg"));
    InstallMainThreadLoop();
    SetNewMapQuestion(AskForNewMap);
    InstallListAccessibility();
    InstallComboAccessibility();
    setFont(DialogFont());
    CreateControls();
}

BlockDlg::~BlockDlg() {
    if (windowExists)
        DestroyWindow();
}

bool BlockDlg::IsUp() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.begin(), windows.end(), [](const QWidget* window) {
        const auto* const dialog = dynamic_cast<const BlockDlg*>(window);
        return dialog != nullptr && dialog->Exists();
    });
}

int BlockDlg::DoModal() {
    WaitForLastClose();
    Handle([this] { OnInitDialog(); });
    const int result = exec();
    Handle([this] { DestroyWindow(); });
    return result;
}

void BlockDlg::OnInitDialog() {
    windowExists = true;
    closeArmed = true;
    setWindowTitle(ToQt(versionText + L" - " + iniPath));
    const DialogLayout layout = LayOutDialog(DialogUnits(font()), QGuiApplication::primaryScreen()->geometry().width());
    for (const auto& [name, place] : layout.places)
        findChild<QWidget*>(QString::fromStdString(name))->setGeometry(place);
    setFixedSize(layout.size);
    ReadHostRelease();
    InsertColumns();
    controls->blockList->SetIconSpacing({142, 120});
    SetupDlg(*this);
    dialogOpen = Exists();
    LoadIni();
    closing = false;
    placementCallback = nullptr;
    if (Directory* const current = currentDirectory)
        ShowDirectory(current);
}

void BlockDlg::DestroyWindow() {
    windowExists = false;
    quickPic.reset();
    hide();
    destroy();
    BrowserWindow* self = this;
    theBlockDlg.compare_exchange_strong(self, nullptr);
    for (std::thread& request : closeRequests)
        request.join();
    closeRequests.clear();
    if (placementCallback == nullptr)
        return;
    const HeldDirectory held(currentDirectory); // it may ask the user
    placementCallback(placementBlock);
}

void BlockDlg::OnCommand(int id) {
    if (id == kCloseCommand)
        QDialog::reject();
    else if (id == QuickPic::kGoneCommand)
        quickPic.reset();
}

void BlockDlg::OnCancel() {
    RequestClose(*this);
}

void BlockDlg::reject() {
    OnCancel();
}

void RequestClose(BlockDlg& dlg) {
    dlg.closeRequests.emplace_back([&dlg] {
        if (!closeArmed.exchange(false))
            return;
        dlg.closing = true;
        StopLoader();
    });
}

void BlockDlg::PostCommand(int id) {
    QCoreApplication::postEvent(this, new CommandEvent(id));
}

bool BlockDlg::event(QEvent* event) {
    if (event->type() == CommandEvent::Kind()) {
        OnCommand(static_cast<CommandEvent*>(event)->id);
        return true;
    }
    return QDialog::event(event);
}

void BlockDlg::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F1) {
        Handle([this] { OnHelp(); });
        return;
    }
    QDialog::keyPressEvent(event);
}

void BlockDlg::Handle(const std::function<void()>& handler) {
    ReportErrors(handler);
}

void BlockDlg::CreateControls() {
    controls = std::make_unique<BlockDlgControls>(MakeBlockDlgControls(*this));
    ConnectControls();
}

void BlockDlg::ConnectControls() {
    const auto click = [this](QAbstractButton* button, void (BlockDlg::*handler)()) {
        connect(button, &QAbstractButton::clicked, this, [this, handler] { Handle([&] { (this->*handler)(); }); });
    };
    click(controls->close, &BlockDlg::OnCancel);
    click(controls->insert, &BlockDlg::OnInsert);
    click(controls->open, &BlockDlg::OnOpen);
    click(controls->xref, &BlockDlg::OnXref);
    click(controls->amCatalog, &BlockDlg::OnAmCatalog);
    click(controls->viewButton, &BlockDlg::OnViewButton);
    click(controls->help, &BlockDlg::OnHelp);
    click(controls->print, &BlockDlg::OnPrint);
    click(controls->add, &BlockDlg::OnAdd);
    click(controls->remove, &BlockDlg::OnDelete);
    click(controls->schemes, &BlockDlg::OnSchemes);
    click(controls->moveUp, &BlockDlg::MoveDirectoryUp);
    click(controls->moveDown, &BlockDlg::MoveDirectoryDown);
    const auto open = [this](QAbstractButton* button, void (*dialog)(BlockDlg&)) {
        connect(button, &QAbstractButton::clicked, this, [this, dialog] { Handle([&] { dialog(*this); }); });
    };
    open(controls->preferences, EditPreferences);
    open(controls->editDescription, EditDescription);

    controls->quickFind->onChange = [this] { Handle([this] { QuickFind(true); }); };
    controls->quickFind->onReturn = [this] { Handle([this] { QuickFindNext(); }); };
    controls->viewButton->hasDirectory = [] { return currentDirectory != nullptr; };
    controls->viewButton->hasLargeImages = [] {
        const Directory* const directory = currentDirectory;
        return directory != nullptr && directory->useLargeImages;
    };
    controls->viewButton->setView = [this](int view) { Handle([this, view] { SetView(view); }); };
    ConnectLists();
    ConnectQuickPic();
}
