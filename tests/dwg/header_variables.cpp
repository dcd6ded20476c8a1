#include "editor/dwg/header_variables.h"
#include "editor/dwg/bits.h"
#include "tests/dwg/container_builder.h"
#include "tests/dwg/model_support.h"
#include "tests/dwg/real_drawings.h"

#include <gmock/gmock.h>

namespace {

using dwg::Bytes;
using dwg::DrawingFile;
using dwg::HeaderVariables;
using dwg::Release;
using testing::HasSubstr;
using testing::IsEmpty;

DrawingFile fileWith(const Bytes& headerSection, Release release = Release::r2000) {
    const Bytes bytes = release <= Release::r2000 ? tests::buildFlatFile(release, {{0, headerSection}})
                                                  : tests::buildPagedFile(release, {{"AcDb:Header", headerSection}});
    auto file = DrawingFile::open(dwg::memorySource(bytes));
    EXPECT_TRUE(file);
    return *file;
}

HeaderVariables variablesOfManyKinds() {
    HeaderVariables variables;
    variables.INSBASE = {1.5, -2.25, 1e-12};
    variables.USERR4 = 3.0000000000000004;
    variables.USERI1 = -7;
    variables.LUPREC = 8;
    variables.ORTHOMODE = true;
    variables.TDCREATE = {2459000, 43200000};
    variables.TDUPDATE = {2460000, 86399999};
    variables.CECOLOR.index = 256;
    variables.CLAYER = {5, 0x10};
    variables.HANDSEED = 0xABCDEF;
    variables.LIMMAX = {420, 297};
    variables.DIMPOST = L"<> mm";
    variables.MENUNAME = L"Menü";
    variables.DIMLWD = -3;
    variables.flags = 0x2E1D;
    variables.modelSpace = {5, 0x1F};
    variables.paperSpace = {5, 0x1B};
    return variables;
}

TEST(HeaderVariables, writtenFor2000AndReadAgainAreTheSame) {
    const HeaderVariables written = variablesOfManyKinds();
    const Bytes section = tests::guarded(Release::r2000, dwg::writeHeaderVariables(written, 30));
    dwg::Findings findings;
    const auto read = dwg::readHeaderVariables(fileWith(section), &findings);
    ASSERT_TRUE(read) << read.error().reason;
    EXPECT_THAT(findings, IsEmpty());
    EXPECT_TRUE(*read == written);
    EXPECT_EQ(read->MENUNAME, L"Menü");
    EXPECT_EQ(read->USERI1, -7);
}

TEST(HeaderVariables, aDrawingPlotStyleIsStoredOnlyWhereTheTypeAsksForIt) {
    HeaderVariables variables;
    const std::size_t without = dwg::writeHeaderVariables(variables, 30).size();
    variables.CEPSNTYPE = 3;
    variables.CPSNID = {5, 0x1234};
    const Bytes content = dwg::writeHeaderVariables(variables, 30);
    EXPECT_GT(content.size(), without);
    const auto read = dwg::readHeaderVariables(fileWith(tests::guarded(Release::r2000, content)));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->CPSNID.value, 0x1234u);
    EXPECT_TRUE(*read == variables);
}

TEST(HeaderVariables, visitingNamesWhatIsStoredIn2000InItsOrder) {
    std::vector<std::string> names;
    dwg::visitHeaderVariables(HeaderVariables{}, [&](const char* name, const auto&) { names.push_back(name); });
    EXPECT_EQ(names.front(), "unknownLength");
    EXPECT_THAT(names, testing::IsSupersetOf({"INSBASE", "USERR4", "PSVPSCALE", "DIMLUNIT", "modelSpace"}));
    EXPECT_THAT(names, testing::Not(testing::Contains("BLIPMODE"))) << "R13 and R14 only";
    EXPECT_THAT(names, testing::Not(testing::Contains("CAMERADISPLAY"))) << "from 2007 on";
    EXPECT_THAT(names, testing::Not(testing::Contains("CPSNID"))) << "only with CEPSNTYPE 3";
}

TEST(HeaderVariables, aCheckThatDoesNotMatchIsAFinding) {
    Bytes section = tests::guarded(Release::r2000, dwg::writeHeaderVariables(HeaderVariables{}, 30));
    section[section.size() - 17] ^= 1;
    dwg::Findings findings;
    ASSERT_TRUE(dwg::readHeaderVariables(fileWith(section), &findings));
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_THAT(findings[0].reason, HasSubstr("check"));
}

TEST(HeaderVariables, guardsThatDoNotBelongTogetherAreAFinding) {
    Bytes section = tests::guarded(Release::r2000, dwg::writeHeaderVariables(HeaderVariables{}, 30));
    section.back() ^= 1;
    dwg::Findings findings;
    ASSERT_TRUE(dwg::readHeaderVariables(fileWith(section), &findings));
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_THAT(findings[0].reason, HasSubstr("guards"));
}

TEST(HeaderVariables, aSectionThatEndsEarlyIsAnError) {
    const Bytes content = dwg::writeHeaderVariables(HeaderVariables{}, 30);
    for (const std::size_t length : {std::size_t{0}, std::size_t{5}, content.size() / 2, content.size() - 1}) {
        const Bytes cut(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(length));
        const auto read = dwg::readHeaderVariables(fileWith(tests::guarded(Release::r2000, cut)));
        ASSERT_FALSE(read) << length;
        EXPECT_EQ(read.error().kind, dwg::ErrorKind::truncated);
    }
}

TEST(HeaderVariables, aLengthBeyondTheSectionIsAnError) {
    Bytes section = tests::guarded(Release::r2000, dwg::writeHeaderVariables(HeaderVariables{}, 30));
    section[18] = 0x7F;
    const auto read = dwg::readHeaderVariables(fileWith(section));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().kind, dwg::ErrorKind::damaged);
}

TEST(HeaderVariables, referencesThatBeginOutsideTheSectionAreAnError) {
    for (const Release release : {Release::r2010, Release::r2018}) {
        const auto read = dwg::readHeaderVariables(fileWith(tests::guarded(release, Bytes(100), 101 * 8), release));
        ASSERT_FALSE(read);
        EXPECT_THAT(read.error().reason, HasSubstr("references"));
    }
}

TEST(HeaderVariables, ofRealDrawingsOf2000AreWrittenAsTheyWere) {
    const auto drawings = tests::drawingsOf2000();
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    for (const auto& path : drawings) {
        SCOPED_TRACE(path.filename());
        const auto file = DrawingFile::open(path);
        ASSERT_TRUE(file);
        dwg::Findings findings;
        const auto variables = dwg::readHeaderVariables(*file, &findings);
        ASSERT_TRUE(variables);
        EXPECT_THAT(findings, IsEmpty());
        const auto section = file->section(dwg::section::header);
        const Bytes content(section->begin() + 20, section->end() - 18);
        // One of the programs fills the section up by a byte that belongs to no variable.
        const Bytes written = dwg::writeHeaderVariables(*variables, file->codePage());
        ASSERT_LE(content.size(), written.size() + 1);
        EXPECT_EQ(tests::hex(written),
                  tests::hex(Bytes(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(
                                                                          std::min(content.size(), written.size())))));
    }
}

TEST(HeaderVariables, textsOfRealDrawingsStandAtTheirNames) {
    const auto drawings = tests::realDrawings();
    if (drawings.empty())
        GTEST_SKIP() << "no shared drawings";
    int found = 0;
    for (const auto& path : drawings) {
        const auto file = DrawingFile::open(path);
        if (!file || file->release() < Release::r2000)
            continue;
        SCOPED_TRACE(path.filename());
        const auto variables = dwg::readHeaderVariables(*file);
        ASSERT_TRUE(variables);
        for (std::wstring identifier : {variables->FINGERPRINTGUID, variables->VERSIONGUID}) {
            if (identifier.ends_with(L'\0')) // counted by some programs
                identifier.pop_back();
            const bool isWhole = identifier.size() == 38 && identifier.starts_with(L'{') && identifier.ends_with(L'}');
            EXPECT_TRUE(identifier.empty() || isWhole) << std::string(identifier.begin(), identifier.end());
            found += isWhole ? 1 : 0;
        }
        EXPECT_FALSE(variables->DIMPOST.starts_with(L'.')) << "that is the menu's";
    }
    EXPECT_GT(found, 100);
}

} // namespace
