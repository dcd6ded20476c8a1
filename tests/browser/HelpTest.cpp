// "Help" and F1: the file, its copy, and the window that shows it.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/browser/HelpFile.h"
#include "tessaro/browser/HelpWindow.h"
#include "tessaro/browser/QtUserInterface.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Paths.h"
#include "tests/support/Shell.h"

#include <QApplication>
#include <QTest>

namespace {

/// Notes the file that is to be shown.
struct HelpRecorder : QtUserInterface {
    HelpRecorder() { platform::SetUserInterface(this); }
    ~HelpRecorder() override { platform::SetUserInterface(&standing); }
    void ShowHelp(const std::wstring& file) override { shown.push_back(file); }
    std::vector<std::wstring> shown;
    inline static QtUserInterface standing;
};

struct Help : Browser {
    Help() : before(qgetenv("HOME")), beforeData(qgetenv("XDG_DATA_HOME")) {
        qputenv("HOME", QByteArray::fromStdString((folder.path() / "home").string()));
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString((folder.path() / "home/data").string()));
        std::filesystem::create_directories(folder.path() / "home/data");
        moduleFolder = (folder.path() / "App").wstring();
        source = folder.path() / "Apptessaro.chm";
        copy = std::filesystem::path(platform::ApplicationDataFolder()) / "Norvane" / "help" / "tessaro.chm";
    }
    ~Help() override {
        qputenv("HOME", before);
        beforeData.isEmpty() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", beforeData);
    }
    const QByteArray before, beforeData;
    std::filesystem::path source, copy;
};

TEST_F(Help, WithoutTheFileTheFoldersAreMadeAndNothingIsSaid) {
    Run([&](BlockDlg& dlg) {
        const HelpRecorder recorder;
        dlg.Controls().help->click();
        EXPECT_TRUE(recorder.shown.empty());
        EXPECT_EQ(QApplication::activeModalWidget(), &dlg) << "no message";
    });
    EXPECT_TRUE(std::filesystem::is_directory(copy.parent_path()));
    EXPECT_FALSE(std::filesystem::exists(copy));
}

TEST_F(Help, TheFileStandsAtTheModulesFolderWithNothingBetweenAndItsCopyIsShown) {
    folder.write("Apptessaro.chm", "first");
    Run([&](BlockDlg& dlg) {
        const HelpRecorder recorder;
        dlg.Controls().help->click();
        QTest::keyClick(&dlg, Qt::Key_F1);
        QTest::keyClick(dlg.Controls().blockList, Qt::Key_F1);
        QTest::keyClick(dlg.Controls().quickFind, Qt::Key_F1);
        EXPECT_EQ(recorder.shown, std::vector<std::wstring>(4, copy.wstring()));
    });
    EXPECT_EQ(tests::readFile(copy), "first");
    EXPECT_EQ(std::filesystem::last_write_time(copy), std::filesystem::last_write_time(source));
}

TEST_F(Help, TheCopyIsRenewedWhereItsTimeDiffersAndLeftWhereItDoesNot) {
    folder.write("Apptessaro.chm", "first");
    const auto time = std::filesystem::last_write_time(source);
    const auto show = [&] {
        Run([](BlockDlg& dlg) {
            const HelpRecorder recorder;
            dlg.Controls().help->click();
        });
    };
    show();
    folder.write("Apptessaro.chm", "other");
    std::filesystem::last_write_time(source, time);
    show();
    EXPECT_EQ(tests::readFile(copy), "first") << "the same time: not copied";
    std::filesystem::last_write_time(source, time - std::chrono::hours(1));
    show();
    EXPECT_EQ(tests::readFile(copy), "other") << "an older file is copied too";
}

TEST_F(Help, TheGuideIsShownInAWindowOfTheDialogThatEscapeCloses) {
    std::filesystem::copy_file(TESSARO_BIN_DIR "tessaro.chm", source);
    Run([&](BlockDlg& dlg) {
        dlg.Controls().help->click();
        auto* const window = dlg.findChild<HelpWindow*>("helpWindow");
        ASSERT_NE(window, nullptr);
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(window->toPlainText().contains("The user's guide"));
        window->setSource(QUrl("placing.html"));
        EXPECT_TRUE(window->toPlainText().contains("If the drawing has a block of that name"));
        QTextBrowser& browser = *window;
        EXPECT_FALSE(browser.loadResource(QTextDocument::ImageResource, QUrl("/images/quickpic.png")).isNull());
        EXPECT_TRUE(dlg.isVisible());
        dlg.Controls().help->click();
        EXPECT_EQ(dlg.findChildren<HelpWindow*>("helpWindow").size(), 1);
        QTest::keyClick(window, Qt::Key_Escape);
        EXPECT_TRUE(WaitFor([&] { return dlg.findChild<HelpWindow*>("helpWindow") == nullptr; }));
        EXPECT_TRUE(closeArmed) << "the dialog stays";
        dlg.Controls().help->click();
    });
}

TEST(HelpFile, HoldsEveryPageOfTheGuideUnderItsName) {
    const std::string file = tests::readFile(TESSARO_BIN_DIR "tessaro.chm");
    ASSERT_FALSE(file.empty());
    int pages = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TESSARO_SOURCE_DIR "/docs/guide")) {
        if (entry.path().extension() != ".md")
            continue;
        const auto page = HelpPage(file, "/" + entry.path().stem().string() + ".html");
        ASSERT_TRUE(page) << entry.path();
        EXPECT_NE(page->find("<h1>"), std::string::npos) << entry.path();
        ++pages;
    }
    EXPECT_GE(pages, 11);
    EXPECT_EQ(HelpPage(file, "/INDEX.html"), HelpPage(file, "/index.html"));
    EXPECT_EQ(HelpPage(file, "/images/quickpic.png"), tests::readFile(TESSARO_SOURCE_DIR "/docs/images/quickpic.png"));
    EXPECT_EQ(HelpPage(file, "/other.html"), std::nullopt);
    EXPECT_EQ(HelpPage("", "/index.html"), std::nullopt);
}

TEST(HelpFile, ADamagedFileIsReadWithinItsBounds) {
    std::string file = tests::readFile(TESSARO_BIN_DIR "tessaro.chm");
    ASSERT_GT(file.size(), 0x1100U);
    const std::size_t head = 0x60 + 0x18 + 0x54 + 200;
    for (std::size_t size = 0; size < head; ++size)
        EXPECT_EQ(HelpPage(std::string_view(file).substr(0, size), "/index.html"), std::nullopt) << size;
    int found = 0;
    for (std::size_t place = 0; place < head; ++place)
        for (const char value : {'\0', '\x7F', '\xFF'}) {
            const char kept = file[place];
            file[place] = value;
            found += HelpPage(file, "/index.html").has_value() ? 1 : 0;
            file[place] = kept;
        }
    EXPECT_GT(found, 0) << "not every byte matters";
    EXPECT_LT(found, static_cast<int>(head) * 3) << "some do";
}

TEST(HelpFile, MoreThanOnePageIsFoundEachUnderItsName) {
    const tests::TemporaryFolder folder;
    std::string command = TESSARO_BIN_DIR "/tessaro-help " + tests::quoted((folder.path() / "out.chm").string());
    for (int page = 0; page < 12; ++page) {
        const std::string name = std::string(1, static_cast<char>('m' - page)) + ".html";
        command += " " + tests::quoted(folder.write(name, "page " + name + std::string(300, '.')).string());
    }
    ASSERT_EQ(tests::runShell(command).status, 0);
    const std::string file = tests::readFile(folder.path() / "out.chm");
    for (char name = 'b'; name <= 'm'; ++name) {
        const std::string full = std::string(1, name) + ".html";
        EXPECT_EQ(HelpPage(file, "/" + full), "page " + full + std::string(300, '.'));
    }
}

} // namespace
