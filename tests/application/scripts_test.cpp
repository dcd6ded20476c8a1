// Scripts of commands with the transcripts that they must give: tests/editor/NAME.scr and NAME.txt. %FOLDER% stands for
// a folder of the test's own. TESSARO_WRITE_TRANSCRIPTS=1 writes the transcripts anew instead of comparing them.
#include "editor/application/drawing.h"
#include "editor/application/format.h"
#include "editor/database/attributes.h"
#include "editor/database/database_state.h"
#include "tests/application/EditorSession.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>
#include <set>

namespace {

using namespace editor;

const std::filesystem::path scripts = TESSARO_SOURCE_DIR "/tests/editor";
constexpr const char* placeholder = "%FOLDER%";

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

/// A window that says what it is told to show.
class TellingWindow : public WindowServices {
public:
    explicit TellingWindow(Console& output) : console(output) {}

    std::optional<View> view() const override { return shown; }
    void setView(const View& view) override {
        shown = view;
        console.printLine(L"[view " + numberText(view.center.x) + L"," + numberText(view.center.y) + L" of " +
                          numberText(view.width) + L" x " + numberText(view.height) + L"]");
    }
    void zoomExtents() override { console.printLine(L"[view of all]"); }
    void regenerate() override { console.printLine(L"[drawn anew]"); }

private:
    Console& console;
    View shown{{5, 4, 0}, 10, 8};
};

std::vector<std::string> scriptNames() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(scripts)) {
        if (entry.path().extension() == ".scr")
            names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

class Scripts : public testing::TestWithParam<std::string> {
protected:
    Scripts() {
        makeFiles();
        session.emplace();
        window.emplace(session->editor.console());
        session->editor.setWindow(&*window);
    }
    ~Scripts() override { session->editor.setWindow(nullptr); }

    std::wstring path(const std::string& name) const { return fromUtf8((folder.path() / name).string()); }

    void makeFiles() {
        std::filesystem::create_directory(folder.path() / "a b");
        makeTagged();
        tests::Session maker;
        maker.editor.execute(L"SAVEAS " + path("locked.dwg") + L"\nSAVEAS " + path("protected.dwg") +
                             L"\nLINE 0,0 1,0 \nSAVEAS " + path("a b/DOOR.dwg") + L"\n");
        folder.write("locked.dwk", "Anna\ndesk\n");
        std::filesystem::permissions(folder.path() / "protected.dwg", std::filesystem::perms(0444));
        folder.write("rubbish.dwg", "AC1015 and nothing more");
        folder.write("empty.dwg", "");
        const std::string whole = tests::readFile(folder.path() / "a b/DOOR.dwg");
        folder.write("cut.dwg", whole.substr(0, whole.size() / 2));
        folder.write("rubbish.arx", "no module at all");
        folder.write("binary.lsp", std::string("\0\xFF\x01(", 4));
        folder.write("half.scr", "CIRCLE 1,1\n");
        folder.write("symbols.lsp", "; symbols\n(setq first \"one\") ; the first\n(setq second\n  2.5)\n");
        folder.write("broken.lsp", "(setq before 1)\n(defun behind)\n(setq behind 2)\n");
        folder.write("script.scr", "; drawn by a script\nCIRCLE 1,1 2\nLINE 0,0\n1,1\n\n");
    }

    void makeTagged() {
        AcDbDatabase drawing;
        const auto add = [&](const wchar_t* tag, const wchar_t* prompt, const wchar_t* value, double y) {
            dwg::AttributeDefinition definition;
            definition.attribute.tag = tag;
            definition.prompt = prompt;
            definition.attribute.text.value = value;
            definition.attribute.text.height = 1;
            definition.attribute.text.insertion = {0, y};
            struct Definition : AcDbEntity {
                explicit Definition(dwg::AttributeDefinition body)
                    : AcDbEntity(Impl::freshEntity(desc(), dwg::object_type::attributeDefinition, std::move(body))) {}
            };
            ASSERT_FALSE(addToModelSpace(drawing, std::make_unique<Definition>(definition)).isNull());
        };
        add(L"NUMBER", L"Which number?", L"", 0);
        add(L"COLOUR", L"", L"white", 2);
        ASSERT_EQ(drawing.saveAs(path("TAGGED.dwg").c_str()), eOk);
    }

    tests::TemporaryFolder folder;
    std::optional<tests::Session> session;
    std::optional<TellingWindow> window;
};

TEST_P(Scripts, GiveTheirTranscripts) {
    const std::string own = folder.path().string();
    std::ifstream in(scripts / (GetParam() + ".scr"));
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] != ';')
            session->user.types(fromUtf8(replaced(line, placeholder, own)) + L"\n");
    }
    session->editor.run();
    std::string transcript = replaced(session->transcript, own, placeholder);
    for (const std::string& fault : session->faults())
        transcript += "Not carried out: " + replaced(fault, own, placeholder) + "\n";

    const auto expected = scripts / (GetParam() + ".txt");
    if (std::getenv("TESSARO_WRITE_TRANSCRIPTS") != nullptr) {
        std::ofstream(expected, std::ios::binary) << transcript;
        GTEST_SKIP() << "the transcript was written anew";
    }
    EXPECT_EQ(transcript, tests::readFile(expected));
}

TEST(ScriptNames, EveryCommandOfTheEditorStandsInAScript) {
    std::set<std::wstring> written;
    for (const std::string& name : scriptNames()) {
        std::ifstream in(scripts / (name + ".scr"));
        for (std::string line; std::getline(in, line);)
            written.insert(upperCased(fromUtf8(line.substr(0, line.find(' ')))));
    }
    const tests::Session session;
    for (const auto& command : Editor::instance()->commands().all())
        EXPECT_TRUE(written.contains(command->globalName)) << tests::utf8(command->globalName);
}

INSTANTIATE_TEST_SUITE_P(Editor, Scripts, testing::ValuesIn(scriptNames()),
                         [](const auto& script) { return script.param; });

} // namespace
