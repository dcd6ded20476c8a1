#include "tests/application/EditorSession.h"

#include "editor/application/drawing.h"

namespace tests {

std::vector<std::string> modelSpaceOf(AcDbDatabase& database) {
    std::vector<std::string> texts;
    for (const AcDbObjectId id : editor::modelSpaceEntities(database)) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), eOk);
        if (entity == nullptr)
            continue;
        if (const auto* const reference = dynamic_cast<AcDbBlockReference*>(entity))
            texts.push_back("INSERT " + utf8(editor::recordName(reference->blockTableRecord())));
        else
            texts.push_back(dynamic_cast<AcDbLine*>(entity) != nullptr     ? "LINE"
                            : dynamic_cast<AcDbCircle*>(entity) != nullptr ? "CIRCLE"
                                                                           : utf8(entity->isA()->name()));
        entity->close();
    }
    return texts;
}

} // namespace tests
