// browser_portrait OUT [--width N] [--height N] [--scale F] [--dark] [--restricted] [--release TEXT] [--only NAME]...
//                  FOLDER...
//
// Leaves report.png, large.png, small.png, list.png, selected.png, menu.png and quickpic.png of the browser on the
// folders in OUT, with a log where OUT holds a folder "Log", and controls.txt: a line for the window ("window X Y
// WIDTH HEIGHT") and one for each control. "--only dialogs" leaves the dialogs that its controls open.
#include "editor/application/editor.h"
#include "tessaro/browser/BlockDlg.h"
#include "tessaro/browser/BlockDlgControls.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"
#include "tests/browser/portrait/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QPainter>
#include <QSet>
#include <QTemporaryFile>
#include <QTest>
#include <QTextStream>
#include <QTimer>

#include <clocale>
#include <cstdio>
#include <mutex>

namespace {

struct Options {
    QString out, release;
    QStringList folders;
    QSet<QString> only;
    int width = 1920, height = 1200;
    QByteArray scale = "1";
    bool dark = false, restricted = false;
};

bool Read(int argc, char** argv, Options& options) {
    QStringList words;
    for (int place = 1; place < argc; ++place)
        words << QString::fromLocal8Bit(argv[place]);
    if (words.isEmpty())
        return false;
    options.out = words.takeFirst();
    while (!words.isEmpty()) {
        const QString word = words.takeFirst();
        if (word == "--dark")
            options.dark = true;
        else if (word == "--restricted")
            options.restricted = true;
        else if (word.startsWith("--") && words.isEmpty())
            return false;
        else if (word == "--width")
            options.width = words.takeFirst().toInt();
        else if (word == "--height")
            options.height = words.takeFirst().toInt();
        else if (word == "--scale")
            options.scale = words.takeFirst().toLatin1();
        else if (word == "--release")
            options.release = words.takeFirst();
        else if (word == "--only")
            options.only << words.takeFirst();
        else
            options.folders << word;
    }
    return true;
}

/// A screen of that size, for Qt's platform without a display.
QByteArray ScreenFile(QTemporaryFile& file, const Options& options) {
    file.setFileTemplate(QDir::tempPath() + "/portrait-XXXXXX.json");
    if (!file.open())
        return {};
    QTextStream(&file) << "{ \"synchronousWindowSystemEvents\": false, \"windowFrameMargins\": false, \"screens\": [ "
                          "{ \"name\": \"Screen\", \"x\": 0, \"y\": 0, \"width\": "
                       << options.width << ", \"height\": " << options.height
                       << ", \"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1 } ] }\n";
    return file.fileName().toLocal8Bit();
}

QPalette DarkPalette() {
    QPalette palette(QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::AlternateBase, QColor(53, 53, 53));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(53, 53, 53));
    palette.setColor(QPalette::ToolTipText, Qt::white);
    return palette;
}

bool WaitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 60'000);
}

bool WaitIdle() {
    return WaitFor([] {
        const std::unique_lock queue(loader.cs, std::try_to_lock);
        return queue.owns_lock() && loader.loadQueue.empty() && loader.pause == 0;
    });
}

class Portrait {
public:
    Portrait(BlockDlg& shown, const Options& read) : dialog(shown), options(read) {}

    void Take() {
        done = WaitIdle();
        Controls();
        const std::pair<const char*, int> views[]{{"large", 0}, {"small", 1}, {"list", 2}, {"report", 3}};
        for (const auto& [name, view] : views) {
            dialog.SetView(view);
            Grab(name, dialog);
        }
        dialog.Controls().blockList->SelectRow(2);
        dialog.Controls().blockList->setFocus();
        Grab("selected", dialog);
        Menu();
        LargePicture();
        if (options.only.contains("dialogs"))
            done = GrabDialogs(dialog, options.out) && done;
    }
    bool Done() const { return done; }

private:
    void Grab(const QString& name, QWidget& window) {
        if (!options.only.isEmpty() && !options.only.contains(name))
            return;
        QCoreApplication::processEvents();
        done = window.grab().save(options.out + '/' + name + ".png") && done;
    }

    void Controls() {
        QFile file(options.out + "/controls.txt");
        done = file.open(QFile::WriteOnly) && done;
        QTextStream out(&file);
        const auto line = [&out](const QString& name, const QRect& place) {
            out << name << ' ' << place.x() << ' ' << place.y() << ' ' << place.width() << ' ' << place.height()
                << '\n';
        };
        line("window", {dialog.pos(), dialog.size()});
        for (const QWidget* control : dialog.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (!control->objectName().isEmpty())
                line(control->objectName(), control->geometry());
    }

    /// The block list's menu with its submenu open, over the dialog.
    void Menu() {
        QTimer::singleShot(0, &dialog, [this] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr) {
                done = false;
                return;
            }
            QPixmap all = dialog.grab();
            QPainter painter(&all);
            for (QAction* action : menu->actions())
                if (action->menu() != nullptr && action->text() == "Sort") {
                    menu->setActiveAction(action);
                    WaitFor([action] { return action->menu()->isVisible(); });
                }
            for (QWidget* window : QApplication::topLevelWidgets())
                if (window->isVisible() && window->inherits("QMenu"))
                    painter.drawPixmap(dialog.mapFromGlobal(window->pos()), window->grab());
            painter.end();
            if (options.only.isEmpty() || options.only.contains("menu"))
                done = all.save(options.out + "/menu.png") && done;
            while (QWidget* popup = QApplication::activePopupWidget())
                popup->close();
        });
        emit dialog.Controls().blockList->customContextMenuRequested({180, 150});
    }

    /// The large picture of a block near the list's lower end, where it leaves the block's row to be seen.
    void LargePicture() {
        MyList& list = *dialog.Controls().blockList;
        list.SelectRow(std::min(7, list.Rows().RowCount() - 1));
        QTest::keyClick(&list, Qt::Key_Space);
        QWidget* const popup = dialog.findChild<QWidget*>("QuickPic");
        if (popup == nullptr) {
            done = false;
            return;
        }
        if (options.only.isEmpty() || options.only.contains("quickpic")) {
            QPixmap all = dialog.grab();
            QPainter(&all).drawPixmap(dialog.mapFromGlobal(popup->pos()), popup->grab());
            done = all.save(options.out + "/quickpic.png") && done;
        }
        popup->close();
    }

    BlockDlg& dialog;
    const Options& options;
    bool done = true;
};

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!Read(argc, argv, options)) {
        std::fprintf(stderr, "usage: browser_portrait OUT [--width N] [--height N] [--scale F] [--dark] [--restricted] "
                             "[--release TEXT] [--only NAME]... FOLDER...\n");
        return 2;
    }
    QTemporaryFile screen;
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + ScreenFile(screen, options));
    qputenv("QT_SCALE_FACTOR", options.scale);
    qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (options.dark)
        QApplication::setPalette(DarkPalette());
    platform::SetMainThread();

    editor::Editor host;
    host.documents().create();
    if (!options.release.isEmpty())
        host.setReleaseText(options.release.toStdWString());
    if (options.restricted) {
        QFile list(options.out + "/tessaroadmin.ini");
        if (!list.open(QFile::WriteOnly) || list.write("[Users]\nnobody of that name\n") < 0)
            return 1;
        host.addSupportFolder(options.out.toStdWString());
    }
    moduleFolder = LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    if (QDir(options.out + "/Log").exists())
        moduleFolder = options.out.toStdWString();
    versionText = L"3.9.10";
    iniPath = (options.out + "/tessaro35.ini").toStdWString();
    cachePath = (options.out + "/tessaro35.cache").toStdWString();
    columnWidths = {150, 45, 165, 60, 130, 130};
    dirColumnWidths = {80, 45, 42};
    setupEvent.SetEvent();
    for (const QString& folder : options.folders) {
        auto* const directory = new Directory;
        directory->path = QFileInfo(folder).absoluteFilePath().toStdWString();
        directory->description = QFileInfo(folder).fileName().toStdWString();
        directory->description[0] = platform::ToUpper(directory->description.substr(0, 1))[0];
        directory->cacheFile = options.out.toStdWString() + L"/" + directory->description + L".cache";
        directories.push_back(directory);
    }

    BlockDlg dialog;
    Portrait portrait(dialog, options);
    QTimer::singleShot(0, &dialog, [&] {
        portrait.Take();
        dialog.reject();
    });
    dialog.DoModal();
    WaitForLastClose();
    currentDirectory = nullptr;
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
    return portrait.Done() ? 0 : 1;
}
