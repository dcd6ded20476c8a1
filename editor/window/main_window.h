#pragma once

#include "editor/application/services.h"

#include <QMainWindow>

#include <deque>
#include <map>
#include <string_view>

class QEventLoop;
class AcApDocument;
class QLabel;
class QTabBar;

namespace editor {

class CommandPanel;
class ButtonToolBar;
class DrawingView;
class Ribbon;
class SnapButton;

/// The editor's window: the current drawing above, the command line below. It answers the prompts of a user at work by
/// waiting in an event loop of its own; in batch mode a script answers them and the window only shows.
class MainWindow : public QMainWindow, public WindowServices, public UserInput {
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    /// Shows what the command line prints.
    void print(std::wstring_view text);

    // UserInput
    UserEvent next(const Prompt& prompt) override;
    void interrupt() override;

    // WindowServices
    void* mainWindow() override { return static_cast<QWidget*>(this); }
    bool asksForFiles() const override { return interactive; }
    std::optional<std::wstring> pickFileToOpen(const std::wstring& start) override;
    std::optional<std::wstring> pickFileToSave(const std::wstring& start) override;
    bool asksToSave() const override { return interactive; }
    SaveAnswer askToSave(const std::wstring& drawing) override;
    std::optional<int> pickColour(int start) override;
    AcDbObjectId objectAt(const AcGePoint3d& point) override;
    void zoomExtents() override;
    std::optional<View> view() const override;
    void setView(const View& part) override;
    void regenerate() override;
    void highlight(const std::vector<AcDbObjectId>& objects) override;
    void buttonsChanged() override;
    void documentsChanged() override;
    void drawingChanged() override;

    /// What menus and the command line gave that no prompt has taken yet; a script's run takes it up.
    bool hasWaiting() const { return !waiting.empty(); }
    std::optional<UserEvent> takeWaiting();

    /// Whether a person works here (files are asked for by dialogs) or a script.
    void setInteractive(bool person) { interactive = person; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void makeMenus();
    void start(const QString& command);
    void give(UserEvent event);
    void send(const QString& text);
    void fillTabs();
    void activateTab(int tab);
    void closeTab(int tab);
    void setLightBackground(bool light);

    QTabBar* tabs;
    DrawingView* drawing;
    CommandPanel* panel;
    QLabel* coordinates;
    SnapButton* snaps;
    Ribbon* ribbon;
    ButtonToolBar* applicationBar;
    const AcApDocument* shown = nullptr;       // compared, never used
    std::map<const AcApDocument*, View> views; // how each drawing was looked at last
    std::deque<UserEvent> waiting;
    QEventLoop* loop = nullptr; // of the innermost next()
    bool atCommandPrompt = false;
    bool interactive = true;
    bool tabsOutdated = false;
};

} // namespace editor
