#include "editor/database/database_state.h"
#include "tests/application/EditorSession.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace {

using namespace editor;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class Processor : public testing::Test {
protected:
    Processor() { session.editor.reactors().addReactor(&reactor); }

    static void send(const wchar_t* text, bool echo = false) {
        AcApDocManager* const manager = acDocManagerPtr();
        EXPECT_EQ(manager->sendStringToExecute(manager->curDocument(), text, true, false, echo), eOk);
    }

    tests::RecordingReactor reactor;
    tests::Session session;
};

TEST_F(Processor, AnUnknownCommandIsToldInUpperCaseAndIsAFault) {
    session.editor.execute(L"frobnicate\n");
    EXPECT_TRUE(session.said("Unknown command \"FROBNICATE\".\n"));
    EXPECT_THAT(session.faults(), ElementsAre("Unknown command \"FROBNICATE\"."));
    EXPECT_THAT(reactor.events, IsEmpty());
}

TEST_F(Processor, BlankAndHugeLinesChangeNothing) {
    const std::size_t objects = session.database().impl()->drawing.objects().size();
    session.editor.execute(L"\n   \n" + std::wstring(1'000'000, L'x') + L"\nCIRCLE " + std::wstring(500'000, L'9') +
                           L"\n^C");
    EXPECT_EQ(session.database().impl()->drawing.objects().size(), objects);
    ASSERT_EQ(session.faults().size(), 1u);
    EXPECT_EQ(session.faults()[0], "Unknown command \"" + std::string(255, 'X') + "...\".");
}

TEST_F(Processor, ANameOfAVariableIsAskedForAsBySetvar) {
    session.editor.execute(L"userr4 2.5\n");
    EXPECT_THAT(reactor.events, ElementsAre("started SETVAR", "ended SETVAR"));
    EXPECT_EQ(session.variable(L"USERR4"), "2.5");
}

TEST_F(Processor, ADrawingHasChangesWhereACommandLeftSome) {
    session.addCommand(L"LOOKS", [] {});
    session.editor.execute(L"LOOKS\nLIST ALL\n\nZOOM E\nUSERR4 0\n");
    EXPECT_EQ(session.variable(L"DBMOD"), "0");
    session.editor.execute(L"USERR4 1\n");
    EXPECT_EQ(session.variable(L"DBMOD"), "1");
}

TEST_F(Processor, WhatANotificationChangesIsTakenBackWithItsCommand) {
    reactor.then = [&](const std::string& event) {
        if (event == "ended CIRCLE")
            acdbHostApplicationServices()->workingDatabase()->setUserr4(5);
    };
    session.editor.execute(L"CIRCLE 0,0 1\n");
    EXPECT_EQ(session.database().userr4(), 5);
    reactor.then = {};
    session.editor.execute(L"U\n");
    EXPECT_EQ(session.database().userr4(), 0);
    EXPECT_THAT(tests::modelSpaceOf(session.database()), IsEmpty());
}

TEST_F(Processor, ReactorsHearGlobalNamesInUpperCase) {
    session.editor.execute(L"circle 0,0 1\n");
    EXPECT_THAT(reactor.events, ElementsAre("started CIRCLE", "ended CIRCLE"));
}

TEST_F(Processor, PrefixesReachOwnAndGlobalNames) {
    static int runs;
    runs = 0;
    EXPECT_EQ(session.editor.commands().addCommand(L"G", L"GLOBALNAME", L"LOKAL", ACRX_CMD_MODAL, [] { ++runs; }), eOk);
    session.editor.execute(L"lokal\n_globalname\n");
    EXPECT_EQ(runs, 2);
    EXPECT_THAT(reactor.events, Contains("ended GLOBALNAME").Times(2));
    session.editor.execute(L"globalname\n_lokal\n._GLOBALNAME\n");
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(session.faults().size(), 3u);
}

TEST_F(Processor, AFullStopReachesTheOwnCommandBehindAnApplications) {
    static int runs;
    runs = 0;
    session.addCommand(L"CIRCLE", [] { ++runs; });
    session.editor.execute(L"CIRCLE\n._CIRCLE 0,0 1\n");
    EXPECT_EQ(runs, 1);
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE"));
}

TEST_F(Processor, AnEmptyAnswerRepeatsTheLastCommand) {
    session.editor.execute(L"\nCIRCLE 0,0 1\n\n5,5 2\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE", "CIRCLE"));
}

TEST_F(Processor, CancelAndFailureHaveTheirOwnNotifications) {
    session.addCommand(L"BREAKS", [] { throw std::runtime_error("broken \xC3\xA9"); });
    session.addCommand(L"BREAKSODDLY", [] { throw 5; });
    session.editor.execute(L"LINE\n\x1B");
    session.editor.execute(L"BREAKS\nBREAKSODDLY\n");
    EXPECT_THAT(reactor.events, ElementsAre("started LINE", "cancelled LINE", "started BREAKS", "failed BREAKS",
                                            "started BREAKSODDLY", "failed BREAKSODDLY"));
    EXPECT_TRUE(session.said("BREAKS failed: broken \xC3\xA9\n"));
    EXPECT_TRUE(session.said("BREAKSODDLY failed.\n"));
    EXPECT_THAT(session.faults(), ElementsAre("BREAKS failed", "BREAKSODDLY failed"));
}

TEST_F(Processor, ACommandNeedsADrawingUnlessItIsASessionCommand) {
    session.editor.execute(L"CLOSE\n");
    ASSERT_EQ(session.editor.documents().current(), nullptr);
    session.editor.execute(L"LINE\n");
    EXPECT_TRUE(session.said("No drawing is open for the command LINE."));
    session.editor.execute(L"NEW\n");
    EXPECT_NE(session.editor.documents().current(), nullptr);
}

TEST_F(Processor, SentTextRunsAfterThePresentCommandInTheOrderOfSending) {
    session.addCommand(L"SENDS", [] {
        send(L"(setq order \"first\") CIRCLE 0,0 1\n");
        send(L"(setq order \"second\") LINE 0,0 1,1 \n");
        AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
        EXPECT_THAT(tests::modelSpaceOf(*database), IsEmpty());
    });
    session.editor.execute(L"SENDS\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE", "LINE"));
    EXPECT_EQ(session.editor.lisp().symbol(L"order"), LispValue(L"second"));
    EXPECT_THAT(reactor.events, ElementsAre("started SENDS", "ended SENDS", "started CIRCLE", "ended CIRCLE",
                                            "started LINE", "ended LINE"));
}

TEST_F(Processor, SentTextThatLeavesACommandWaitingIsAnsweredByWhatTheUserTypes) {
    session.addCommand(L"SENDS", [] { send(L"CIRCLE\n"); });
    session.user.types(L"1,1 3\n");
    session.editor.execute(L"SENDS\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE"));
}

TEST_F(Processor, TextSentWhileACommandWaitsDoesNotAnswerIt) {
    session.addCommand(L"SENDS", [] {
        send(L"LINE 0,0 1,1 \n");
        wchar_t buffer[20];
        EXPECT_EQ(acedGetString(1, L"Name: ", buffer, 20), RTNORM);
        EXPECT_STREQ(buffer, L"typed");
    });
    session.user.types(L"typed\n");
    session.editor.execute(L"SENDS\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("LINE"));
}

TEST_F(Processor, TextSentFromANotificationRunsAfterItAndBeforeTheRestOfTheScript) {
    reactor.then = [](const std::string& event) {
        if (event == "ended CIRCLE")
            send(L"LINE 0,0 1,1 \n");
    };
    session.editor.execute(L"CIRCLE 0,0 1\nERASE L \n");
    EXPECT_THAT(reactor.events, ElementsAre("started CIRCLE", "ended CIRCLE", "started LINE", "ended LINE",
                                            "started ERASE", "ended ERASE"));
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE"));
}

TEST_F(Processor, TheEchoFlagDecidesWhetherTheTranscriptShowsTheText) {
    session.addCommand(L"LOUD", [] { send(L"QUIETLY ", true); });
    session.addCommand(L"SILENT", [] { send(L"WHISPER ", false); });
    session.addCommand(L"QUIETLY", [] {});
    session.addCommand(L"WHISPER", [] {});
    session.editor.execute(L"LOUD\nSILENT\n");
    EXPECT_TRUE(session.said("Command: QUIETLY\n"));
    EXPECT_FALSE(session.said("WHISPER"));
    EXPECT_THAT(reactor.events, Contains("ended WHISPER"));
}

TEST_F(Processor, SendingWakesAUserWhoWaitsAtTheCommandPrompt) {
    send(L"CIRCLE 0,0 1\n");
    EXPECT_EQ(session.user.interruptions, 1);
    session.user.events.push_back({UserEvent::Kind::Interrupted, {}, {}});
    session.editor.run();
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE"));
}

TEST_F(Processor, TextIsRefusedWithoutADocumentOrText) {
    AcApDocManager* const manager = acDocManagerPtr();
    EXPECT_EQ(manager->sendStringToExecute(nullptr, L"LINE\n"), Acad::eNoDocument);
    EXPECT_EQ(manager->sendStringToExecute(manager->curDocument(), nullptr), Acad::eInvalidInput);
}

TEST_F(Processor, TextForADrawingThatIsClosedFirstIsDropped) {
    session.editor.execute(L"NEW\n");
    send(L"FROBNICATE\n");
    session.editor.documents().close(*session.editor.documents().current());
    session.editor.execute(L"CIRCLE 0,0 1\n");
    EXPECT_THAT(session.faults(), IsEmpty());
}

TEST_F(Processor, AReactorMayRemoveItselfAndOthers) {
    tests::RecordingReactor second, third;
    session.editor.reactors().addReactor(&second);
    session.editor.reactors().addReactor(&third);
    second.then = [&](const std::string&) {
        session.editor.reactors().removeReactor(&second);
        session.editor.reactors().removeReactor(&third);
        session.editor.reactors().removeReactor(&third);
    };
    session.editor.execute(L"CIRCLE 0,0 1\n");
    EXPECT_THAT(reactor.events, ElementsAre("started CIRCLE", "ended CIRCLE"));
    EXPECT_THAT(second.events, ElementsAre("started CIRCLE"));
    EXPECT_THAT(third.events, IsEmpty());
}

TEST_F(Processor, AReactorThatIsAddedInANotificationHearsTheNextOne) {
    tests::RecordingReactor late;
    reactor.then = [&](const std::string&) { session.editor.reactors().addReactor(&late); };
    session.editor.execute(L"CIRCLE 0,0 1\n");
    EXPECT_THAT(late.events, ElementsAre("ended CIRCLE"));
    session.editor.reactors().removeReactor(&late);
}

TEST_F(Processor, AReactorAddedTwiceHearsOnce) {
    session.editor.reactors().addReactor(&reactor);
    session.editor.reactors().addReactor(nullptr);
    session.editor.execute(L"CIRCLE 0,0 1\n");
    EXPECT_THAT(reactor.events, ElementsAre("started CIRCLE", "ended CIRCLE"));
}

TEST_F(Processor, AnExceptionOfAReactorIsToldAndTheOthersHearAllTheSame) {
    tests::RecordingReactor second;
    session.editor.reactors().addReactor(&second);
    reactor.then = [](const std::string&) { throw std::runtime_error("no"); };
    session.editor.execute(L"CIRCLE 0,0 1\n");
    EXPECT_THAT(second.events, ElementsAre("started CIRCLE", "ended CIRCLE"));
    EXPECT_TRUE(session.said("A reactor failed: no"));
    session.editor.reactors().removeReactor(&second);
}

/// Elements of a list, freed at the end.
class List {
public:
    List& add(const wchar_t* text) {
        resbuf* const element = append(RTSTR);
        acutNewString(text, element->resval.rstring);
        return *this;
    }
    List& add(double number) {
        append(RTREAL)->resval.rreal = number;
        return *this;
    }
    List& add(short number) {
        append(RTSHORT)->resval.rint = number;
        return *this;
    }
    List& add(double x, double y) {
        resbuf* const element = append(RTPOINT);
        element->resval.rpoint[0] = x;
        element->resval.rpoint[1] = y;
        return *this;
    }
    List& end() {
        append(RTNONE);
        return *this;
    }
    const resbuf* elements() const { return first; }
    ~List() { acutRelRb(first); }

private:
    resbuf* append(int type) {
        resbuf* const element = acutNewRb(type);
        (last != nullptr ? last->rbnext : first) = element;
        last = element;
        return element;
    }
    resbuf *first = nullptr, *last = nullptr;
};

class CommandList : public Processor {
protected:
    /// Runs the list inside a command OUTER.
    int run(const List& list) {
        given = &list;
        session.addCommand(L"OUTER", [] { result = acedCmdS(given->elements()); });
        session.editor.execute(L"OUTER\n");
        return result;
    }

    static inline const List* given;
    static inline int result;
};

TEST_F(CommandList, RunsAtOnceInsideTheRunningCommandAndGivesZero) {
    EXPECT_EQ(run(List().add(L"._circle").add(1.0, 2.0).add(3.5).end()), 0);
    EXPECT_THAT(reactor.events, ElementsAre("started OUTER", "started CIRCLE", "ended CIRCLE", "ended OUTER"));
}

TEST_F(CommandList, TakesEachElementAsOneAnswerBlanksIncluded) {
    EXPECT_EQ(run(List().add(L"SETVAR").add(L"INSNAME").add(L"a name with blanks").end()), 0);
    EXPECT_EQ(session.variable(L"INSNAME"), "\"a name with blanks\"");
}

TEST_F(CommandList, HoldsSeveralCommands) {
    EXPECT_EQ(run(List().add(L"CIRCLE").add(L"0,0").add(short(2)).add(L"LINE").add(L"0,0").add(L"1,1").add(L"")), 0);
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE", "LINE"));
}

TEST_F(CommandList, PausesForTheUserAtABackslash) {
    session.user.types(L"\n");
    session.user.types(L"oops\n");
    session.user.picks({5, 5, 0});
    EXPECT_EQ(run(List().add(L"CIRCLE").add(L"\\").add(2.0).end()), 0);
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("CIRCLE"));
    EXPECT_EQ(session.user.prompts.size(), 3u) << "what is no point is the user's to answer again";
}

TEST_F(CommandList, AListThatEndsInAPauseLeavesTheRestToTheUser) {
    session.user.picks({5, 5, 0});
    session.user.types(L"D\n");
    session.user.types(L"4\n");
    EXPECT_EQ(run(List().add(L"CIRCLE").add(L"\\").end()), 0);
    EXPECT_THAT(reactor.events, ElementsAre("started OUTER", "started CIRCLE", "ended CIRCLE", "ended OUTER"));
    EXPECT_EQ(session.user.prompts.size(), 3u);
}

TEST_F(CommandList, AListThatEndsBehindAPauseCancelsItsCommand) {
    session.user.picks({5, 5, 0});
    session.user.types(L"4\n");
    EXPECT_NE(run(List().add(L"CIRCLE").add(L"\\").add(L"D").end()), 0);
    EXPECT_THAT(reactor.events, Contains("cancelled CIRCLE"));
}

TEST_F(CommandList, TheUsersEscapeAtThePauseCancelsTheCommandAndIsNoSuccess) {
    session.user.cancels();
    EXPECT_NE(run(List().add(L"CIRCLE").add(L"\\").end()), 0);
    EXPECT_THAT(reactor.events, ElementsAre("started OUTER", "started CIRCLE", "cancelled CIRCLE", "ended OUTER"));
}

TEST_F(CommandList, AListThatEndsTooEarlyCancelsItsCommand) {
    session.user.types(L"1,1\n");
    EXPECT_NE(run(List().add(L"CIRCLE").end()), 0);
    EXPECT_THAT(reactor.events, Contains("cancelled CIRCLE"));
    EXPECT_THAT(session.user.prompts, testing::Not(Contains(testing::HasSubstr(L"center"))));
}

TEST_F(CommandList, AnUnknownCommandIsNoSuccess) {
    EXPECT_NE(run(List().add(L"._-frob").add(L"x").end()), 0);
    EXPECT_TRUE(session.said("Unknown command \"._-FROB\"."));
}

TEST_F(CommandList, AListWithoutACommandIsNoSuccess) {
    EXPECT_NE(acedCmdS(nullptr), 0);
    EXPECT_NE(run(List().end()), 0);
    EXPECT_NE(acedCmdS(List().add(2.0).elements()), 0);
}

TEST_F(Processor, CommandsAreAddedOnceAGroupAndRemovedByGroup) {
    CommandStack& commands = session.editor.commands();
    const AcRxFunctionPtr nothing = [] {};
    EXPECT_EQ(commands.addCommand(L"G", L"ONE", L"ONE", 0, nothing), eOk);
    EXPECT_EQ(commands.addCommand(L"g", L"one", L"OTHER", 0, nothing), Acad::eDuplicateKey);
    EXPECT_EQ(commands.addCommand(L"H", L"ONE", L"ONE", 0, nothing), eOk);
    EXPECT_EQ(commands.addCommand(L"G", L"", L"X", 0, nothing), Acad::eInvalidInput);
    EXPECT_EQ(commands.addCommand(nullptr, L"X", L"X", 0, nothing), Acad::eInvalidInput);
    EXPECT_EQ(commands.addCommand(L"G", L"X", L"X", 0, nullptr), Acad::eInvalidInput);
    EXPECT_EQ(commands.removeGroup(L"g"), eOk);
    EXPECT_EQ(commands.removeGroup(L"G"), Acad::eKeyNotFound);
    EXPECT_EQ(commands.removeGroup(nullptr), Acad::eInvalidInput);
    EXPECT_NE(commands.find(L"ONE"), nullptr);
    EXPECT_EQ(commands.removeGroup(L"H"), eOk);
    EXPECT_EQ(commands.find(L"ONE"), nullptr);
}

TEST_F(Processor, ACommandThatRemovesItsOwnGroupIsCarriedToItsEnd) {
    session.addCommand(L"LAST", [] {
        auto* const commands = dynamic_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
        EXPECT_EQ(commands->removeGroup(L"TEST"), eOk);
    });
    session.editor.execute(L"LAST\n");
    EXPECT_THAT(reactor.events, ElementsAre("started LAST", "ended LAST"));
}

} // namespace
