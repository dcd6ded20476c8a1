// How prompts take their answers, seen through commands that ask.
#include "editor/application/numbers.h"
#include "tests/application/EditorSession.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;
using testing::ElementsAre;

/// Adds a command ASK that runs a function on the command line.
class Prompts : public testing::Test {
protected:
    void ask(const std::function<void(CommandLine&)>& function, const std::wstring& text) {
        session.editor.commands().addOwn(
            {L"TEST", L"ASK", L"ASK", ACRX_CMD_MODAL, [this, function] { function(session.editor.commandLine()); }});
        session.editor.execute(text);
    }

    std::string line(const std::wstring& text) {
        std::wstring answer = L"(none)";
        ask([&](CommandLine& prompts) { answer = prompts.getLine(L"Name: "); }, text);
        return tests::utf8(answer);
    }

    tests::Session session;
};

TEST_F(Prompts, ALinePromptTakesTheRestOfTheLineThatTheCommandBegan) {
    EXPECT_EQ(line(L"ASK /a b/DOOR.dwg\nNEXT"), "/a b/DOOR.dwg");
}

TEST_F(Prompts, ALinePromptBehindALineEndTakesTheNextLine) {
    EXPECT_EQ(line(L"ASK\n  two words  \n"), "two words");
}

TEST_F(Prompts, ATextThatNoDrawingStoresIsAskedForAgain) {
    EXPECT_EQ(line(L"ASK\n" + std::wstring(8193, L'x') + L"\n" + std::wstring(8192, L'y') + L"\n"),
              std::string(8192, 'y'));
    EXPECT_TRUE(session.said("The text is too long."));
}

TEST_F(Prompts, QuotesAroundAWholeLineAreTakenOff) {
    EXPECT_EQ(line(L"ASK \"a b\"\n"), "a b");
}

TEST_F(Prompts, AnEmptyAnswerAtAPointPromptAsksAgain) {
    AcGePoint3d point;
    ask([&](CommandLine& prompts) { point = *prompts.getPoint(L"Point: ").value; }, L"ASK\n \n\n1,2\n");
    EXPECT_EQ(point.y, 2);
    EXPECT_THAT(session.faults(), ElementsAre());
}

TEST_F(Prompts, AnEmptyAnswerIsGivenBackWhereItMayBe) {
    bool empty = false;
    PromptOptions options;
    options.mayBeEmpty = true;
    ask([&](CommandLine& prompts) { empty = prompts.getPoint(L"Point: ", options).empty(); }, L"ASK\n\n");
    EXPECT_TRUE(empty);
}

TEST_F(Prompts, APointThatIsNoneIsToldAndAskedAgain) {
    AcGePoint3d point;
    ask([&](CommandLine& prompts) { point = *prompts.getPoint(L"Point: ").value; }, L"ASK 1,x 3,4\n");
    EXPECT_EQ(point.x, 3);
    EXPECT_TRUE(session.said("Invalid point."));
}

TEST_F(Prompts, ARelativePointStartsAtTheLastOne) {
    AcGePoint3d point;
    ask(
        [&](CommandLine& prompts) {
            prompts.getPoint(L"One: ");
            point = *prompts.getPoint(L"Two: ").value;
        },
        L"ASK 1,2 @3,4\n");
    EXPECT_EQ(point.x, 4);
    EXPECT_EQ(point.y, 6);
}

TEST_F(Prompts, APickedPointAnswersAPointPromptAndMeasuresForANumber) {
    AcGePoint3d point;
    double distance = 0, angle = 0;
    session.user.picks({1, 1, 0});
    session.user.picks({4, 5, 0});
    session.user.picks({1, 9, 0});
    ask(
        [&](CommandLine& prompts) {
            point = *prompts.getPoint(L"Point: ").value;
            PromptOptions options;
            options.base = point;
            distance = *prompts.getNumber(L"Distance: ", options).value;
            angle = *prompts.getAngle(L"Angle: ", options).value;
        },
        L"ASK\n");
    EXPECT_EQ(point.x, 1);
    EXPECT_DOUBLE_EQ(distance, 5);
    EXPECT_DOUBLE_EQ(angle, pi / 2);
}

TEST_F(Prompts, ANumberThatIsRefusedIsAskedAgain) {
    double number = 0;
    PromptOptions options;
    options.nonZero = true;
    ask([&](CommandLine& prompts) { number = *prompts.getNumber(L"Factor: ", options).value; }, L"ASK 0 _rotate 90.5 ");
    EXPECT_EQ(number, 90.5);
    EXPECT_TRUE(session.said("Value must be nonzero."));
    EXPECT_TRUE(session.said("Requires numeric value."));
}

TEST_F(Prompts, APositiveNumberIsAboveZero) {
    double number = 0;
    PromptOptions options;
    options.positive = true;
    ask([&](CommandLine& prompts) { number = *prompts.getNumber(L"Radius: ", options).value; }, L"ASK -1 0 2 ");
    EXPECT_EQ(number, 2);
}

TEST_F(Prompts, AnAngleIsTypedInDegrees) {
    double angle = 0;
    ask([&](CommandLine& prompts) { angle = *prompts.getAngle(L"Angle: ").value; }, L"ASK 180\n");
    EXPECT_DOUBLE_EQ(angle, pi);
}

TEST_F(Prompts, AKeywordPromptTakesItsDefaultForAnEmptyAnswerAndRefusesOtherWords) {
    std::wstring first, second;
    const Keywords keywords(L"Yes No");
    ask(
        [&](CommandLine& prompts) {
            first = prompts.getKeyword(L"One? ", keywords, L"No");
            second = prompts.getKeyword(L"Two? ", keywords, L"No");
        },
        L"ASK\n\nmaybe _y\n");
    EXPECT_EQ(first, L"No");
    EXPECT_EQ(second, L"Yes");
    EXPECT_TRUE(session.said("Invalid option keyword."));
}

TEST_F(Prompts, TextWithoutAnEndIsCompletedByWhatTheUserTypesNext) {
    session.user.types(L"two\n");
    EXPECT_EQ(line(L"ASK\none "), "one two");
}

TEST_F(Prompts, AnExpressionAnswersByItsValue) {
    session.editor.execute(L"(setq w \"three words long\")\n");
    AcGePoint3d point;
    std::wstring text;
    ask(
        [&](CommandLine& prompts) {
            text = prompts.getText(L"Text: ", false);
            point = *prompts.getPoint(L"Point: ").value;
        },
        L"(setq p \"7,8\")\nASK !w !p\n");
    EXPECT_EQ(text, L"three words long");
    EXPECT_EQ(point.y, 8);
}

TEST_F(Prompts, AnExpressionThatFailsIsToldAndThePromptAsksAgain) {
    EXPECT_EQ(line(L"(foo)\nASK name\n"), "name");
    EXPECT_TRUE(session.said("; error: no function definition: FOO"));
}

TEST_F(Prompts, EscapeCancelsTheCommandAndTheTextBehindItGoesOn) {
    EXPECT_EQ(line(L"ASK\n\x1B(setq after 1)\n"), "(none)");
    EXPECT_TRUE(session.said("*Cancel*"));
    EXPECT_EQ(session.editor.lisp().symbol(L"after"), LispValue(1));
    EXPECT_THAT(session.faults(), ElementsAre());
}

TEST_F(Prompts, TheUsersEscapeCancelsToo) {
    session.user.cancels();
    EXPECT_EQ(line(L"ASK\n"), "(none)");
    EXPECT_THAT(session.faults(), ElementsAre());
}

TEST_F(Prompts, TheEndOfTheInputCancelsAndIsAFault) {
    EXPECT_EQ(line(L"ASK\n"), "(none)");
    EXPECT_THAT(session.faults(), ElementsAre("ASK was cancelled by the end of the input"));
    EXPECT_TRUE(session.said("*Cancel* The input ended while ASK was waiting."));
}

TEST_F(Prompts, ATransparentCommandRunsInsideAPrompt) {
    EXPECT_EQ(line(L"ASK\nplain\n"), "plain");
    double number = 0;
    ask([&](CommandLine& prompts) { number = *prompts.getNumber(L"Number: ").value; }, L"");
    session.editor.commands().addOwn({L"TEST", L"COUNT", L"COUNT", ACRX_CMD_MODAL,
                                      [&] { number = *session.editor.commandLine().getNumber(L"Number: ").value; }});
    session.editor.execute(L"COUNT\n'SETVAR USERR4 2.5\n12\n");
    EXPECT_EQ(number, 12);
    EXPECT_EQ(session.database().userr4(), 2.5);
    EXPECT_TRUE(session.said("Resuming COUNT command."));
}

TEST_F(Prompts, TheUserSeesThePromptAndTheTranscriptHasItOnce) {
    session.user.types(L"name\n");
    EXPECT_EQ(line(L"ASK\n"), "name");
    EXPECT_THAT(session.user.prompts, ElementsAre(L"Name: "));
    EXPECT_EQ(session.transcript, "Command: ASK\nName: name\n");
}

TEST(GetString, TakesBlanksOrEndsAtThem) {
    tests::Session session;
    static std::wstring withBlanks, without;
    session.addCommand(L"READ", [] {
        wchar_t buffer[133];
        EXPECT_EQ(acedGetString(1, L"Enter a block name: ", buffer, 133), RTNORM);
        withBlanks = buffer;
        EXPECT_EQ(acedGetString(0, nullptr, buffer, 133), RTNORM);
        without = buffer;
        EXPECT_EQ(acedRetVoid(), RTNORM);
    });
    session.editor.execute(L"READ\n two words\nthree four ");
    EXPECT_EQ(withBlanks, L" two words");
    EXPECT_EQ(without, L"three");
    EXPECT_TRUE(session.said("Enter a block name: "));
}

TEST(GetString, CutsALongAnswerToTheBuffer) {
    tests::Session session;
    static std::wstring answer;
    session.addCommand(L"READ", [] {
        wchar_t buffer[4];
        EXPECT_EQ(acedGetString(1, L"", buffer, 4), RTNORM);
        answer = buffer;
    });
    session.editor.execute(L"READ\nabcdef\n");
    EXPECT_EQ(answer, L"abc");
}

TEST(GetString, GivesRtcanForEscape) {
    tests::Session session;
    static int result;
    session.addCommand(L"READ", [] {
        wchar_t buffer[8];
        result = acedGetString(1, L"", buffer, 8);
    });
    session.editor.execute(L"READ\n\x1B");
    EXPECT_EQ(result, RTCAN);
}

} // namespace
