#include "tests/browser/module/LoadedModule.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "tessaro/host/ModuleState.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>

#include <mutex>
#include <sstream>

namespace tests {
namespace {

constexpr int kUnanswered = 5'000; ///< between two looks at a message box

bool moduleIsThere = false;

/// Shows a box that nothing answers as a failure, instead of being held up by it.
class MessageWatch {
public:
    MessageWatch() {
        QObject::connect(&timer, &QTimer::timeout, [this] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box != nullptr && box == standing) {
                ADD_FAILURE() << "nobody answered: " << box->text().toStdString();
                box->done(QMessageBox::No);
            }
            standing = box;
        });
        timer.start(kUnanswered);
    }

private:
    QTimer timer;
    QPointer<QMessageBox> standing;
};

} // namespace

editor::UserEvent PointPicker::next(const editor::Prompt& prompt) {
    if (prompt.kind == editor::Prompt::Kind::Command)
        return {};
    if (points.empty())
        return {editor::UserEvent::Kind::Cancel, {}, {}};
    const AcGePoint3d point = points.front();
    points.pop_front();
    return {editor::UserEvent::Kind::Point, {}, point};
}

LoadedModule::LoadedModule() : app(folder.path() / "app") {
    qputenv("HOME", QByteArray::fromStdString((folder.path() / "home").string()));
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString((folder.path() / "home/data").string()));
    std::filesystem::create_directories(folder.path() / "home/data");
    std::filesystem::create_directories(app / "Log");
    for (const char* file : {"tessaro24-64.arx", "TessaroHelper.dll", "NorvaneRibbon.dll"})
        std::filesystem::create_symlink(std::filesystem::path(TESSARO_BIN_DIR) / file, app / file);
    std::filesystem::current_path(folder.path());
}

LoadedModule::~LoadedModule() {
    host.reset();
    std::filesystem::current_path("/");
}

void LoadedModule::SetUp() {
    if (moduleIsThere)
        GTEST_SKIP() << "the process has a module already; each test needs a process of its own";
}

std::filesystem::path LoadedModule::AddFolder(const std::string& description, const std::vector<std::string>& names,
                                              const std::string& mark, const std::string& keys) {
    const std::string number = std::to_string(++directories);
    const auto place = folder.path() / ("library" + number);
    std::filesystem::create_directories(place);
    for (const std::string& name : names)
        folder.write(place / (name + ".dwg"), mark + std::string(200 + name.size(), '\0'));
    paths += "Path" + number + "=" + place.string() + "\n";
    sections += "[" + place.string() + "]\nDescription=" + description +
                "\nScale=1-to-1\nRotation=0\nCurrentScheme=<None>\n" + keys;
    return place;
}

void LoadedModule::WriteDrawing(const std::filesystem::path& file, const std::wstring& comments) {
    AcDbDatabase drawing;
    EXPECT_FALSE(
        editor::addToModelSpace(drawing, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{1, 0, 0})).isNull());
    if (!comments.empty()) {
        AcDbDatabaseSummaryInfo* made = nullptr;
        ASSERT_EQ(acdbGetSummaryInfo(&drawing, made), eOk);
        const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
        summary->setComments(comments.c_str());
        ASSERT_EQ(acdbPutSummaryInfo(summary.get(), &drawing), eOk);
    }
    ASSERT_EQ(drawing.saveAs(editor::fromUtf8(file.string()).c_str()), eOk);
}

void LoadedModule::Load() {
    folder.write(app / "tessaro35.ini", "[Tessaro Options]\n" + options + "[Paths]\nNumPaths=" +
                                            std::to_string(directories) + "\n" + paths + sections);
    host = std::make_unique<editor::Editor>();
    host->console().setSink([this](std::wstring_view text) { transcript += text; });
    host->setUserInput(&user);
    host->documents().create();
    moduleIsThere = true;
    ASSERT_TRUE(host->linker().loadModule((app / "tessaro24-64.arx").wstring().c_str(), true));
    worker = Symbol<LoaderState*>("loader");
}

void LoadedModule::Run(const std::vector<Script>& scripts, const std::wstring& command) {
    const MessageWatch watch;
    std::size_t opened = 0;
    QPointer<QDialog> present;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || dialog == present || dialog->objectName() != "BlockDlg")
            return;
        present = dialog;
        Window window(*dialog, [this] { return WorkerIsIdle(); });
        try {
            if (opened++ < scripts.size())
                scripts[opened - 1](window);
        } catch (const std::exception& failure) {
            ADD_FAILURE() << failure.what();
        }
        if (present != nullptr)
            window.Press("Close");
    });
    poll.start(5);
    host->execute(command);
    EXPECT_EQ(opened, scripts.size()) << "windows";
}

bool LoadedModule::WorkerIsIdle() const {
    const std::unique_lock queue(worker->cs, std::try_to_lock);
    return queue.owns_lock() && worker->loadQueue.empty() && worker->pause == 0;
}

std::vector<std::string> LoadedModule::AllLog() const {
    std::vector<std::string> lines;
    for (const auto& file : std::filesystem::directory_iterator(app / "Log")) {
        std::istringstream in(readFile(file.path()));
        for (std::string line; std::getline(in, line);) {
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            lines.push_back(line);
        }
    }
    return lines;
}

std::vector<std::string> LoadedModule::Log() const {
    const std::vector<std::string> all = AllLog();
    return {all.begin() + static_cast<std::ptrdiff_t>(std::min(logStart, all.size())), all.end()};
}

std::string LoadedModule::Settings() const {
    std::string text = readFile(app / "tessaro35.ini");
    std::erase(text, '\r');
    return text;
}

} // namespace tests
