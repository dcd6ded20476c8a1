#include "editor/window/main_window.h"

#include "editor/application/editor.h"
#include "editor/database/wireframe.h"
#include "editor/sdk/documents.h"
#include "editor/sdk/editor.h"
#include "editor/window/colour_dialog.h"
#include "editor/window/command_panel.h"
#include "editor/window/drawing_view.h"
#include "editor/window/ribbon.h"
#include "editor/window/snap_button.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

namespace editor {

namespace {
const char* const drawingFilter = "Drawings (*.dwg *.DWG)";

QStringList commandNames() {
    QStringList names;
    for (const auto& command : Editor::instance()->commands().all())
        names << QString::fromStdWString(command->localName);
    names.sort();
    names.removeDuplicates();
    return names;
}

constexpr std::uint32_t darkBackground = 0, lightBackground = 0xFFFFFF;
} // namespace

MainWindow::MainWindow()
    : tabs(new QTabBar(this)), drawing(new DrawingView(this)), panel(new CommandPanel(this)),
      coordinates(new QLabel(this)), snaps(new SnapButton(this)), ribbon(new Ribbon(this)),
      applicationBar(new ButtonToolBar(this)) {
    setObjectName("mainWindow");
    resize(1280, 860);
    tabs->setObjectName("documentTabs");
    tabs->setAccessibleName("Drawings");
    tabs->setTabsClosable(true);
    tabs->setDocumentMode(true);
    tabs->setExpanding(false);
    tabs->setElideMode(Qt::ElideMiddle);
    auto* middle = new QWidget(this);
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs);
    column->addWidget(drawing, 1);
    setCentralWidget(middle);
    connect(tabs, &QTabBar::tabBarClicked, this, &MainWindow::activateTab);
    connect(tabs, &QTabBar::tabCloseRequested, this, &MainWindow::closeTab);

    auto* dock = new QDockWidget("Command Line", this);
    dock->setObjectName("commandDock");
    dock->setWidget(panel);
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    dock->setTitleBarWidget(new QWidget(dock));
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    resizeDocks({dock}, {170}, Qt::Vertical);

    coordinates->setObjectName("coordinates");
    coordinates->setMinimumWidth(260);
    statusBar()->addWidget(coordinates);
    statusBar()->addPermanentWidget(snaps);
    makeMenus();

    drawing->setSource([] {
        const AcApDocument* document = acDocManagerPtr() == nullptr ? nullptr : acDocManagerPtr()->mdiActiveDocument();
        return document == nullptr ? Wireframe() : wireframeOfModelSpace(*document->database());
    });
    drawing->setSnapper(
        [this](const AcGePoint3d& near, double reach) { return runningSnap(drawing->objectAt(near), near, reach); });
    connect(drawing, &DrawingView::pointPicked, this, [this](double x, double y, double z) {
        UserEvent event;
        event.kind = UserEvent::Kind::Point;
        event.point = {x, y, z};
        give(std::move(event));
    });
    connect(drawing, &DrawingView::pointerMoved, this, [this](double x, double y) {
        coordinates->setText(QString("%1, %2").arg(x, 0, 'f', 4).arg(y, 0, 'f', 4));
    });
    connect(drawing, &DrawingView::entered, panel, &CommandPanel::enter);
    connect(panel, &CommandPanel::entered, this, &MainWindow::send);
    connect(panel, &CommandPanel::cancelled, this, [this] {
        UserEvent event;
        event.kind = UserEvent::Kind::Cancel;
        give(std::move(event));
    });
    panel->setFocus();

    AcColorSettings colours;
    if (acedGetCurrentColors(&colours))
        drawing->setBackground(colours.dwGfxModelBkColor);
}

MainWindow::~MainWindow() = default;

void MainWindow::makeMenus() {
    const auto command = [this](QMenu* menu, const QString& text, const QKeySequence& keys, const QString& sent) {
        QAction* action = menu->addAction(text);
        action->setShortcut(keys);
        connect(action, &QAction::triggered, this, [this, sent] { start(sent); });
        return action;
    };
    QMenu* file = menuBar()->addMenu("&File");
    command(file, "&New", QKeySequence::New, "._NEW\n");
    command(file, "&Open...", QKeySequence::Open, "._OPEN\n");
    command(file, "&Save", QKeySequence::Save, "._QSAVE\n");
    command(file, "Save &As...", QKeySequence::SaveAs, "._SAVEAS\n");
    file->addSeparator();
    command(file, "&Quit", QKeySequence::Quit, "._QUIT\n");
    QMenu* edit = menuBar()->addMenu("&Edit");
    command(edit, "&Undo", QKeySequence::Undo, "._U\n");
    command(edit, "&Redo", QKeySequence::Redo, "._REDO\n");
    QMenu* blocks = menuBar()->addMenu("&Blocks");
    QAction* library = command(blocks, "Block &Library...", QKeySequence("Ctrl+B"), "TESSARO\n");
    QMenu* viewMenu = menuBar()->addMenu("&View");
    QAction* extents = viewMenu->addAction("Zoom &Extents");
    extents->setShortcut(QKeySequence("Ctrl+E"));
    connect(extents, &QAction::triggered, drawing, &DrawingView::zoomExtents);

    QAction* light = viewMenu->addAction("&Light Background");
    light->setCheckable(true);
    connect(light, &QAction::toggled, this, &MainWindow::setLightBackground);

    ribbon->addPanel("Blocks", {library});
    ribbon->addPanel("View", {extents});
    addToolBar(ribbon);
    addToolBarBreak();
    addToolBar(applicationBar);
    connect(ribbon, &Ribbon::chosen, this, &MainWindow::start);
    connect(applicationBar, &ButtonToolBar::chosen, this, &MainWindow::start);
}

void MainWindow::start(const QString& command) {
    // A command of a menu or a button ends what is running, as Escape would.
    if (!atCommandPrompt) {
        UserEvent cancel;
        cancel.kind = UserEvent::Kind::Cancel;
        give(std::move(cancel));
    }
    send(command);
}

void MainWindow::buttonsChanged() {
    ribbon->showButtons(Editor::instance()->ribbon().buttons());
    applicationBar->showButtons(Editor::instance()->toolbar().buttons());
}

void MainWindow::print(std::wstring_view text) {
    panel->append(QString::fromWCharArray(text.data(), static_cast<qsizetype>(text.size())));
}

void MainWindow::give(UserEvent event) {
    waiting.push_back(std::move(event));
    if (loop != nullptr)
        loop->quit();
}

void MainWindow::send(const QString& text) {
    UserEvent event;
    event.kind = UserEvent::Kind::Text;
    event.text = text.toStdWString();
    give(std::move(event));
}

std::optional<UserEvent> MainWindow::takeWaiting() {
    if (waiting.empty())
        return std::nullopt;
    UserEvent event = std::move(waiting.front());
    waiting.pop_front();
    return event;
}

UserEvent MainWindow::next(const Prompt& prompt) {
    atCommandPrompt = prompt.kind == Prompt::Kind::Command;
    panel->setPrompt(QString::fromStdWString(prompt.text));
    panel->setWholeLine(prompt.wholeLine);
    panel->setCommandNames(atCommandPrompt ? commandNames() : QStringList());
    drawing->setPrompt(prompt);
    snaps->refresh();
    if (waiting.empty()) {
        QEventLoop own;
        QEventLoop* outer = loop;
        loop = &own;
        own.exec();
        loop = outer;
    }
    drawing->endPrompt();
    return takeWaiting().value_or(UserEvent{UserEvent::Kind::End, {}, {}});
}

void MainWindow::interrupt() {
    if (!atCommandPrompt)
        return;
    UserEvent event;
    event.kind = UserEvent::Kind::Interrupted;
    give(std::move(event));
}

std::optional<std::wstring> MainWindow::pickFileToOpen(const std::wstring& start) {
    const QString file =
        QFileDialog::getOpenFileName(this, "Open Drawing", QString::fromStdWString(start), drawingFilter);
    return file.isEmpty() ? std::nullopt : std::optional(file.toStdWString());
}

std::optional<std::wstring> MainWindow::pickFileToSave(const std::wstring& start) {
    QString file = QFileDialog::getSaveFileName(this, "Save Drawing As", QString::fromStdWString(start), drawingFilter);
    if (file.isEmpty())
        return std::nullopt;
    if (QFileInfo(file).suffix().isEmpty())
        file += ".dwg";
    return file.toStdWString();
}

SaveAnswer MainWindow::askToSave(const std::wstring& file) {
    const auto answer = QMessageBox::question(
        this, "Drawing Editor", QString("Save changes to %1?").arg(QFileInfo(QString::fromStdWString(file)).fileName()),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
    if (answer == QMessageBox::Save)
        return SaveAnswer::Save;
    return answer == QMessageBox::Discard ? SaveAnswer::Discard : SaveAnswer::Cancel;
}

std::optional<int> MainWindow::pickColour(int start) {
    QWidget* const front = QApplication::activeModalWidget();
    return ColourDialog::pick(front != nullptr ? front : this, start);
}

AcDbObjectId MainWindow::objectAt(const AcGePoint3d& point) {
    return drawing->objectAt(point);
}

void MainWindow::zoomExtents() {
    drawing->zoomExtents();
}

std::optional<View> MainWindow::view() const {
    return drawing->view();
}

void MainWindow::setView(const View& part) {
    drawing->setView(part);
}

void MainWindow::regenerate() {
    drawing->outdate();
}

void MainWindow::highlight(const std::vector<AcDbObjectId>& objects) {
    drawing->highlight(objects);
}

void MainWindow::documentsChanged() {
    const AcApDocument* document = acDocManagerPtr() == nullptr ? nullptr : acDocManagerPtr()->mdiActiveDocument();
    const QString name = document == nullptr ? QString() : QString::fromWCharArray(document->fileName());
    setWindowTitle(name.isEmpty() ? QString("Drawing Editor") : QFileInfo(name).fileName() + " - Drawing Editor");
    fillTabs();
    drawing->outdate();
    if (document == shown)
        return;
    // Of one that was closed nothing is kept: a later one may lie at its address.
    const bool isOpen = Editor::instance() != nullptr && Editor::instance()->documents().isOpen(shown);
    if (const auto view = drawing->chosenView(); view && isOpen)
        views.insert_or_assign(shown, *view);
    else
        views.erase(shown);
    shown = document;
    drawing->highlight({});
    if (const auto before = views.find(document); before != views.end())
        drawing->setView(before->second);
    else
        drawing->zoomExtents();
}

void MainWindow::fillTabs() {
    const QSignalBlocker quiet(tabs);
    while (tabs->count() > 0)
        tabs->removeTab(0);
    if (Editor::instance() == nullptr)
        return;
    DocumentManager& documents = Editor::instance()->documents();
    for (const auto& document : documents.all()) {
        const QString title = QString::fromStdWString(document->title()).replace(QLatin1Char('&'), "&&");
        const int tab = tabs->addTab(document->isChanged() ? title + QLatin1Char('*') : title);
        tabs->setTabToolTip(tab, QString::fromWCharArray(document->fileName()));
        if (document.get() == documents.current())
            tabs->setCurrentIndex(tab);
    }
    std::erase_if(views, [&](const auto& entry) { return !documents.isOpen(entry.first); });
}

void MainWindow::activateTab(int tab) {
    if (Editor::instance() == nullptr || tab < 0)
        return;
    DocumentManager& documents = Editor::instance()->documents();
    const auto& all = documents.all();
    // In the middle of a command the drawing stays.
    if (atCommandPrompt && static_cast<std::size_t>(tab) < all.size() &&
        documents.activateDocument(all[static_cast<std::size_t>(tab)].get()) == eOk)
        interrupt();
    else
        QTimer::singleShot(0, this, &MainWindow::fillTabs);
}

void MainWindow::closeTab(int tab) {
    activateTab(tab);
    if (atCommandPrompt)
        send("._CLOSE\n");
}

void MainWindow::setLightBackground(bool light) {
    AcColorSettings colours = Editor::instance()->colours();
    colours.dwGfxModelBkColor = light ? lightBackground : darkBackground;
    Editor::instance()->setColours(colours);
    drawing->setBackground(colours.dwGfxModelBkColor);
}

void MainWindow::drawingChanged() {
    drawing->outdate();
    // Several commands in a row cost one look at the tabs.
    if (tabsOutdated)
        return;
    tabsOutdated = true;
    QTimer::singleShot(0, this, [this] {
        tabsOutdated = false;
        fillTabs();
    });
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The command ends the program, after its question about unsaved changes.
    event->ignore();
    if (!atCommandPrompt) {
        UserEvent cancel;
        cancel.kind = UserEvent::Kind::Cancel;
        give(std::move(cancel));
    }
    send("._QUIT\n");
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
    panel->takeKey(event);
}

} // namespace editor
