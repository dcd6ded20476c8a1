// The command line of the window.
#include "editor/window/command_panel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace {

using namespace editor;

struct CommandPanelTest : testing::Test {
    CommandPanelTest() : input(panel.findChild<QLineEdit*>("commandInput")), entered(&panel, &CommandPanel::entered) {
        panel.show();
    }
    QStringList keywords() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList texts;
        for (const auto* button : panel.findChildren<QToolButton*>())
            texts << button->text();
        return texts;
    }
    CommandPanel panel;
    QLineEdit* input;
    QSignalSpy entered;
};

TEST(Keywords, AreWhatStandsInSquareBrackets) {
    EXPECT_EQ(keywordsOf("Specify center or [3P/Ttr (tan tan radius)]: "), QStringList({"3P", "Ttr (tan tan radius)"}));
    EXPECT_EQ(keywordsOf("Command: "), QStringList());
    EXPECT_EQ(keywordsOf("[]"), QStringList());
    EXPECT_EQ(keywordsOf("[/a//b/]"), QStringList({"a", "b"}));
}

TEST_F(CommandPanelTest, ABlankEndsAnAnswerAndBelongsToALineThatIsTakenWhole) {
    QTest::keyClicks(input, "line ");
    ASSERT_EQ(entered.size(), 1);
    EXPECT_EQ(entered[0][0].toString(), "line\n");
    panel.setWholeLine(true);
    QTest::keyClicks(input, "a name");
    QTest::keyClick(input, Qt::Key_Return);
    ASSERT_EQ(entered.size(), 2);
    EXPECT_EQ(entered[1][0].toString(), "a name\n");
}

TEST_F(CommandPanelTest, TheKeywordsOfAPromptAreButtonsThatAnswerIt) {
    panel.setPrompt("Specify insertion point or [Scale/Rotate]: ");
    EXPECT_EQ(panel.findChild<QLabel*>("commandPrompt")->text(), "Specify insertion point or [Scale/Rotate]:");
    EXPECT_EQ(keywords(), QStringList({"Scale", "Rotate"}));
    panel.findChildren<QToolButton*>()[1]->click();
    ASSERT_EQ(entered.size(), 1);
    EXPECT_EQ(entered[0][0].toString(), "Rotate\n");
    panel.setPrompt("Command: ");
    EXPECT_EQ(keywords(), QStringList());
}

TEST_F(CommandPanelTest, ArrowsBringEarlierLinesBack) {
    QTest::keyClicks(input, "one ");
    QTest::keyClicks(input, "two ");
    QTest::keyClick(input, Qt::Key_Up);
    EXPECT_EQ(input->text(), "two");
    QTest::keyClick(input, Qt::Key_Up);
    QTest::keyClick(input, Qt::Key_Up);
    EXPECT_EQ(input->text(), "one");
    QTest::keyClick(input, Qt::Key_Down);
    QTest::keyClick(input, Qt::Key_Down);
    EXPECT_EQ(input->text(), "");
}

TEST_F(CommandPanelTest, TabGoesThroughTheCommandsThatBeginSo) {
    panel.setCommandNames({"CIRCLE", "CLOSE", "LINE"});
    QTest::keyClicks(input, "c");
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_EQ(input->text(), "CIRCLE");
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_EQ(input->text(), "CLOSE");
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_EQ(input->text(), "CIRCLE");
    input->setText("q");
    QTest::keyClick(input, Qt::Key_Tab);
    EXPECT_EQ(input->text(), "q");
}

TEST_F(CommandPanelTest, EscapeClearsTheLineAndCancels) {
    QSignalSpy cancelled(&panel, &CommandPanel::cancelled);
    QTest::keyClicks(input, "half");
    QTest::keyClick(input, Qt::Key_Escape);
    EXPECT_EQ(input->text(), "");
    EXPECT_EQ(cancelled.size(), 1);
}

TEST_F(CommandPanelTest, OfAnEndlessLineTheBeginningIsShown) {
    panel.append("before\n" + QString(1 << 20, 'x') + "\nbehind\n");
    const QString shown = panel.findChild<QPlainTextEdit*>("commandHistory")->toPlainText();
    EXPECT_EQ(shown, "before\n" + QString(2000, 'x') + "...\nbehind\n");
}

} // namespace
