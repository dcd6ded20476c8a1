// The three kinds of schemes that have a pass, over every real drawing that can be read, whatever it holds.
#include "tests/mapping_engine/RealPassTest.h"
#include "tests/support/TemporaryFolder.h"

#include "editor/dwg/read_drawing.h"

#include <cstdio>
#include <cstdlib>

using EveryDrawing = tests::RealPassTest;
using tests::Expectation;

TEST_F(EveryDrawing, HasItsEntitiesMovedAndItsLayersErasedAsTheRulesSay) {
    if (std::getenv("TESSARO_ALL_DRAWINGS") == nullptr)
        GTEST_SKIP() << "takes a minute: set TESSARO_ALL_DRAWINGS";
    const auto shared = tests::sharedFolder("drawings");
    ASSERT_FALSE(shared.empty());
    std::size_t drawings = 0, entities = 0, passes = 0, messagesTold = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(shared)) {
        if (entry.path().extension() != ".dwg")
            continue;
        const auto file = dwg::DrawingFile::open(entry.path());
        if (!file)
            continue;
        const auto read = dwg::readDrawing(*file);
        if (!read)
            continue;
        SCOPED_TRACE(entry.path());
        ++drawings;
        const Expectation before = Expectation::read(*read);
        entities += before.entities.size();
        for (const tests::KindOfScheme& kind : tests::kSchemes) {
            if (kind.schemeType == 3)
                continue;
            for (const bool byLayer : {false, true}) {
                tests::KindOfScheme tried = kind;
                tried.byLayer = byLayer;
                Expectation expected = before;
                expected.apply(tried.schemeType, tried.maps, tried.byLayer);
                ExpectPass(entry.path(), tried, expected);
                ++passes;
                messagesTold += messages.size();
            }
        }
    }
    std::printf("%zu drawings, %zu entities, %zu passes, %zu messages\n", drawings, entities, passes, messagesTold);
    EXPECT_GT(drawings, 100u);
}
