// The chains driven through the browser: the program in batch mode with the module, its dialog answered by a script.
#include "tests/chains/ProgramFixture.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::kList;
using tests::kQuit;

class Dialog : public tests::ProgramTest {
protected:
    Dialog() {
        for (const char* const name : {"DOOR", "oak gate.v2", "T\u00FCr 50%s"})
            MakeDrawing(folder.path() / "lib" / (std::string(name) + ".dwg"));
        Catalogue(folder.path() / "lib");
    }
};

} // namespace

TEST_F(Dialog, ABlockIsPlacedByAClickAndTakenBackByU) {
    EXPECT_EQ(Run(Choose("DOOR") + "10,20\n" + kList + "U\nLIST ALL\n\nREDO\n" + kList + kQuit), 0) << transcript;
    EXPECT_EQ(Count("Block Name: \"DOOR\""), 2u);
    EXPECT_THAT(transcript, HasSubstr("at point, X=10.0000  Y=20.0000"));
    EXPECT_THAT(transcript, HasSubstr("0 found"));
}

TEST_F(Dialog, ExplodeRepeatAndMultipleInsertRunTheirChains) {
    const std::string script = Choose("DOOR", "> set Explode on\n") + "1,1\n" + kList + // one line
                               Choose("DOOR", "> set Explode off\n> set Repeat on\n") + //
                               "> answer No\n2,2\n> wait-until blockList DOOR\n> set Repeat off\n> click Close\n" + //
                               kList + // and a reference
                               Choose("DOOR", "> set \"Multiple Insert\" on\n") + "> answer No\n3,3\n4,4\n^C\n" +
                               kList + "SETVAR CMDNAMES\n" + kQuit;
    EXPECT_EQ(Run(script), 0) << transcript;
    EXPECT_EQ(Count("1 found\nSelect objects: \n  LINE"), 1u) << transcript;
    EXPECT_THAT(transcript, HasSubstr("2 found"));
    EXPECT_THAT(transcript, HasSubstr("4 found"));
    EXPECT_THAT(transcript, HasSubstr("at point, X=4.0000  Y=4.0000"));
}

TEST_F(Dialog, AnExternalReferenceIsAttachedAndAnOpenedBlockBecomesADrawing) {
    EXPECT_EQ(Run(Choose("DOOR", "", "Xref/A") + "5,5\n-XREF ?\n" + Choose("DOOR", "", "Open") +
                  "SETVAR DWGNAME\nLIST ALL\n\nCLOSE\nSETVAR DWGNAME\n" + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("\"DOOR\"  Attach  Loaded"));
    EXPECT_THAT(transcript, HasSubstr("DWGNAME = \"DOOR.dwg\""));
    EXPECT_THAT(transcript, HasSubstr("DWGNAME = \"PLAN.dwg\""));
}

TEST_F(Dialog, EscapeAtThePickTakesTheDefinitionOutAndRepeatReopens) {
    EXPECT_EQ(Run(Choose("DOOR", "> set Repeat on\n") +
                  "^C\n> wait-until blockList DOOR\n> set Repeat off\n> click Close\n-INSERT ?\n*\n^C\n" + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, Not(HasSubstr("\n\"DOOR\"\n")));
}

TEST_F(Dialog, NamesWithBlanksDotsPercentSignsAndForeignLettersArePlaced) {
    EXPECT_EQ(Run(Choose("oak gate.v2") + "1,1\n" + Choose("T\u00FCr 50%s") + "2,2\n" + kList + kQuit), 0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("Block Name: \"oak gate.v2\""));
    EXPECT_THAT(transcript, HasSubstr("Block Name: \"T\u00FCr 50%s\""));
}

TEST_F(Dialog, NamesOfThatKindAreAttachedAndOpenedToo) {
    const std::string name = "T\u00FCr 50%s";
    EXPECT_EQ(Run(Choose(name, "", "Xref/A") + "2,2\n-XREF ?\n" + Choose(name, "", "Open") + "SETVAR DWGNAME\nCLOSE\n" +
                  kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("\"" + name + "\"  Attach  Loaded"));
    EXPECT_THAT(transcript, HasSubstr("DWGNAME = \"" + name + ".dwg\""));
}

TEST_F(Dialog, EscapeAtALaterPickKeepsWhatWasPlacedAndRepeatReopens) {
    EXPECT_EQ(Run(Choose("DOOR", "> set \"Multiple Insert\" on\n> set Repeat on\n") +
                  "1,1\n2,2\n^C\n> wait-until blockList DOOR\n> set Repeat off\n> click Close\n" + kList +
                  "-INSERT ?\n*\n^C\n" + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("\n2 found"));
    EXPECT_THAT(transcript, HasSubstr("\n\"DOOR\"\n"));
}

TEST_F(Dialog, TheCancelOfAForeignCommandInTheMiddleEndsThePlacementAndReopens) {
    EXPECT_EQ(Run(Choose("DOOR", "> set Repeat on\n") +
                  "'ZOOM\n^C\n^C\n> wait-until blockList DOOR\n> set Repeat off\n> click Close\n" + kList +
                  "-INSERT ?\n*\n^C\n" + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("\n0 found"));
    EXPECT_THAT(transcript, Not(HasSubstr("\n\"DOOR\"\n")));
}

TEST_F(Dialog, AForeignCommandThatEndsInTheMiddleChangesNothing) {
    EXPECT_EQ(Run(Choose("DOOR", "> set Explode on\n") + "'ZOOM\nA\n1,1\n" + kList + kQuit), 0) << transcript;
    EXPECT_THAT(transcript, HasSubstr("1 found\nSelect objects: \n  LINE"));
}

TEST_F(Dialog, TheScaleBoxTakesNumbersAndTheDrawingsScale) {
    EXPECT_EQ(Run("DIMSCALE 4\n" + Choose("DOOR", "> set scaleCombo 2.5\n") + "1,1\n" + kList + "SETVAR USERR4\n\n" +
                  Choose("DOOR", "> set scaleCombo DRAWING\n") + "> answer No\n2,2\n" + kList + kQuit),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("X scale factor: 2.5000"));
    EXPECT_THAT(transcript, HasSubstr("<2.5>")) << "the typed scale lives in the drawing";
    EXPECT_THAT(transcript, HasSubstr("X scale factor: 4.0000"));
}

TEST_F(Dialog, AScaleTextThatIsNoNumberAndADimscaleOfZeroAreTheHostsToRefuse) {
    EXPECT_EQ(Run("USERR4 3\nSETVAR USERR4\n\n" + Choose("DOOR", "> set scaleCombo large\n") + "^C\n" + kList +
                  "SETVAR USERR4\n\n" + "DIMSCALE 0\n" + Choose("DOOR", "> set scaleCombo Drawing\n") + "^C\n" + kList +
                  kQuit),
              0)
        << transcript;
    EXPECT_GE(Count("Value must be nonzero."), 2u) << transcript;
    EXPECT_THAT(transcript, HasSubstr("USERR4 <0>")) << "what is no number is zero";
    EXPECT_EQ(Count("\n0 found"), 2u);
}

TEST_F(Dialog, AFileThatVanishesBetweenClickAndCommandIsTheHostsToTell) {
    std::filesystem::create_symlink(folder.path() / "lib" / "DOOR.dwg", folder.path() / "lib" / "LINK.dwg");
    const std::string script = "TESSARO\n> select Lib in directoryList\n> wait-until blockList LINK\n"
                               "> select LINK in blockList\n> click Insert\n^C\nLIST ALL\n\n";
    std::filesystem::remove(folder.path() / "lib" / "LINK.dwg");
    folder.write("lib/LINK.dwg", "no drawing at all");
    EXPECT_EQ(Run(script + kQuit), 1);
    EXPECT_THAT(transcript, HasSubstr("it is not a valid drawing file"));
    EXPECT_THAT(transcript, HasSubstr("Not carried out: -INSERT failed"));
    EXPECT_THAT(transcript, HasSubstr("0 found"));
}

TEST_F(Dialog, AHostOfTheLightKindExplodesByTheLastObject) {
    // The name of the executable decides, in any case.
    const auto program = folder.path() / "AcLT.exe";
    std::filesystem::copy_file(TESSARO_BIN_DIR "/tessaro-editor", program);
    EXPECT_EQ(Run(Choose("DOOR", "> set Explode on\n") + "1,1\n" + kList + kQuit, program.string(),
                  "--load '" TESSARO_BIN_DIR "/tessaro24-64.arx'"),
              0)
        << transcript;
    EXPECT_THAT(transcript, HasSubstr("1 found\nSelect objects: \n  LINE"));
}
