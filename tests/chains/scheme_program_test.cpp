// A scheme in the program: chosen in the browser, asked for unknown names during a placement, kept with its answers.
#include "tests/chains/ProgramFixture.h"

#include "editor/application/drawing.h"
#include "editor/sdk/db.h"

#include <gmock/gmock.h>
#include <memory>

using testing::HasSubstr;
using testing::Not;
using tests::kList;
using tests::kQuit;

namespace {

class SchemeInProgram : public tests::ProgramTest {
protected:
    SchemeInProgram() {
        std::filesystem::create_directory(folder.path() / "lib");
        AcDbDatabase library;
        AcDbLayerTable* table = nullptr;
        EXPECT_EQ(library.getLayerTable(table, AcDb::kForWrite), eOk);
        auto record = std::make_unique<AcDbLayerTableRecord>();
        record->setName(L"LEAF");
        AcDbObjectId layer;
        EXPECT_EQ(table->add(layer, record.get()), eOk);
        record.release()->close();
        table->close();
        EXPECT_EQ(library.setClayer(layer), eOk);
        editor::addToModelSpace(library, std::make_unique<AcDbLine>(AcGePoint3d{}, AcGePoint3d{1, 0, 0}));
        EXPECT_EQ(library.saveAs((folder.path() / "lib" / "DOOR.dwg").wstring().c_str()), eOk);
        Catalogue(folder.path() / "lib", "[Schemes]\nNumSchemes=2\nScheme1=Office\nScheme2=Blocks\n"
                                         "[Office]\nType=Layer\nDefaultToByLayer=Yes\nUnknownType=Ask\n"
                                         "NumMaps=1\nMap1=0,FLOOR\n"
                                         "[Blocks]\nType=Block\nNumMaps=1\nMap1=D*,OPENINGS\n");
    }
};

} // namespace

TEST_F(SchemeInProgram, AnUnknownLayerIsAskedForOnceAndTheAnswerIsSaved) {
    const std::string first = Choose("DOOR", "> select Office in schemeCombo\n> set Explode on\n");
    EXPECT_EQ(Run(first + "> set to doors\n> click OK\n1,1\n" + kList + // asked
                  Choose("DOOR", "> set Explode off\n") + "> answer Yes\n2,2\n" + kList + kQuit),
              0)
        << transcript;
    EXPECT_EQ(Count("LINE  Layer: \"DOORS\""), 2u) << transcript;
    EXPECT_EQ(Count("Layer: \"LEAF\""), 0u);
    EXPECT_THAT(tests::readFile(folder.path() / "tessaro35.ini"), HasSubstr("map2=LEAF,DOORS"));
}

TEST_F(SchemeInProgram, ACancelledQuestionLeavesTheLayerAndComesAgain) {
    const std::string question = "> click Cancel\n";
    EXPECT_EQ(Run(Choose("DOOR", "> select Office in schemeCombo\n> set Explode on\n") + question + "1,1\n" + kList +
                  Choose("DOOR") + "> answer Yes\n" + question + "2,2\n" + kList + kQuit),
              0)
        << transcript;
    EXPECT_EQ(Count("LINE  Layer: \"LEAF\""), 3u) << transcript;
    EXPECT_THAT(tests::readFile(folder.path() / "tessaro35.ini"), Not(HasSubstr("map2")));
}

TEST_F(SchemeInProgram, ABlockNameSchemePutsReferencesAndExternalOnesOnItsLayerForTheTimeOfThePlacement) {
    EXPECT_EQ(Run("UNDO M\n" + Choose("DOOR", "> select Blocks in schemeCombo\n> set \"Multiple Insert\" on\n") +
                  "1,1\n2,2\n^C\nLINE 0,0 1,0\n\n" + kList + "UNDO B\n" +
                  Choose("DOOR", "> set \"Multiple Insert\" off\n", "Xref/A") + "3,3\n" + kList + kQuit),
              0)
        << transcript;
    EXPECT_EQ(Count("BLOCK REFERENCE  Layer: \"OPENINGS\""), 3u) << transcript;
    EXPECT_THAT(transcript, HasSubstr("LINE  Layer: \"0\"")) << "the current layer came back";
}
