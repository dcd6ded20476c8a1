#pragma once

#include "tests/mapping_engine/Expectation.h"
#include "tests/mapping_engine/MappingTest.h"

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace tests {

struct KindOfScheme {
    const char* name;
    int schemeType;
    bool byLayer;
    Maps maps;
};
void PrintTo(const KindOfScheme& kind, std::ostream* out);

/// One scheme of each kind, with patterns that fit the real drawings.
extern const std::vector<KindOfScheme> kSchemes;

/// Schemes over drawings as they are read.
class RealPassTest : public MappingTest {
protected:
    /// Runs the pass of the scheme over the file and looks at every entity, every layer and every message.
    void ExpectPass(const std::filesystem::path& file, const KindOfScheme& kind, const Expectation& expected);

    /// Where an entity is to land, the layer in upper case.
    static Look Told(const PlainEntity& entity);
    static Look UpperLookOf(AcDbObjectId entity);
};

} // namespace tests
