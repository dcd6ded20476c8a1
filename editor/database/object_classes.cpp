#include "editor/database/object_classes.h"

#include "editor/sdk/db.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>

namespace editor {

namespace {

/// Classes made so far, by name. They are compared by identity, so a name is one class for good.
class Registry {
public:
    const AcRxClass* get(const std::wstring& name, const AcRxClass* parent) {
        const std::lock_guard lock(access);
        std::unique_ptr<AcRxClass>& slot = classes[name];
        if (!slot)
            slot = std::make_unique<AcRxClass>(name.c_str(), parent);
        return slot.get();
    }

    static Registry& instance() {
        static Registry registry;
        return registry;
    }

private:
    std::mutex access;
    std::map<std::wstring, std::unique_ptr<AcRxClass>> classes;
};

template <class T> const AcRxClass* describe() {
    return T::desc();
}

const AcRxClass* curve() {
    return Registry::instance().get(L"AcDbCurve", AcDbEntity::desc());
}
const AcRxClass* vertex() {
    return Registry::instance().get(L"AcDbVertex", AcDbEntity::desc());
}

struct TypeRow {
    std::uint16_t type;
    /// Null for a class that the interface declares: it is `relative` itself. Otherwise that is the parent.
    const wchar_t* name;
    const AcRxClass* (*relative)();
};

constexpr TypeRow typeRows[] = {
    {1, nullptr, describe<AcDbText>},
    {2, L"AcDbAttribute", describe<AcDbText>},
    {3, L"AcDbAttributeDefinition", describe<AcDbText>},
    {4, L"AcDbBlockBegin", describe<AcDbEntity>},
    {5, L"AcDbBlockEnd", describe<AcDbEntity>},
    {6, L"AcDbSequenceEnd", describe<AcDbEntity>},
    {7, nullptr, describe<AcDbBlockReference>},
    {8, L"AcDbMInsertBlock", describe<AcDbBlockReference>},
    {10, L"AcDb2dVertex", vertex},
    {11, L"AcDb3dPolylineVertex", vertex},
    {12, L"AcDbPolygonMeshVertex", vertex},
    {13, L"AcDbPolyFaceMeshVertex", vertex},
    {14, L"AcDbFaceRecord", vertex},
    {15, L"AcDb2dPolyline", curve},
    {16, L"AcDb3dPolyline", curve},
    {17, L"AcDbArc", curve},
    {18, nullptr, describe<AcDbCircle>},
    {19, nullptr, describe<AcDbLine>},
    {20, L"AcDbOrdinateDimension", describe<AcDbDimension>},
    {21, L"AcDbRotatedDimension", describe<AcDbDimension>},
    {22, L"AcDbAlignedDimension", describe<AcDbDimension>},
    {23, L"AcDb3PointAngularDimension", describe<AcDbDimension>},
    {24, L"AcDb2LineAngularDimension", describe<AcDbDimension>},
    {25, L"AcDbRadialDimension", describe<AcDbDimension>},
    {26, L"AcDbDiametricDimension", describe<AcDbDimension>},
    {27, L"AcDbPoint", describe<AcDbEntity>},
    {28, L"AcDbFace", describe<AcDbEntity>},
    {29, L"AcDbPolyFaceMesh", describe<AcDbEntity>},
    {30, L"AcDbPolygonMesh", describe<AcDbEntity>},
    {31, L"AcDbSolid", describe<AcDbEntity>},
    {32, L"AcDbTrace", describe<AcDbEntity>},
    {33, L"AcDbShape", describe<AcDbEntity>},
    {34, L"AcDbViewport", describe<AcDbEntity>},
    {35, L"AcDbEllipse", curve},
    {36, L"AcDbSpline", curve},
    {37, L"AcDbRegion", describe<AcDbEntity>},
    {38, L"AcDb3dSolid", describe<AcDbEntity>},
    {39, L"AcDbBody", describe<AcDbEntity>},
    {40, L"AcDbRay", curve},
    {41, L"AcDbXline", curve},
    {42, L"AcDbDictionary", describe<AcDbObject>},
    {43, L"AcDbOleFrame", describe<AcDbEntity>},
    {44, nullptr, describe<AcDbMText>},
    {45, L"AcDbLeader", curve},
    {46, L"AcDbFcf", describe<AcDbEntity>},
    {47, L"AcDbMline", describe<AcDbEntity>},
    {48, nullptr, describe<AcDbBlockTable>},
    {49, nullptr, describe<AcDbBlockTableRecord>},
    {50, nullptr, describe<AcDbLayerTable>},
    {51, nullptr, describe<AcDbLayerTableRecord>},
    {52, L"AcDbTextStyleTable", describe<AcDbSymbolTable>},
    {53, L"AcDbTextStyleTableRecord", describe<AcDbSymbolTableRecord>},
    {56, nullptr, describe<AcDbLinetypeTable>},
    {57, nullptr, describe<AcDbLinetypeTableRecord>},
    {60, L"AcDbViewTable", describe<AcDbSymbolTable>},
    {61, L"AcDbViewTableRecord", describe<AcDbSymbolTableRecord>},
    {62, L"AcDbUCSTable", describe<AcDbSymbolTable>},
    {63, L"AcDbUCSTableRecord", describe<AcDbSymbolTableRecord>},
    {64, L"AcDbViewportTable", describe<AcDbSymbolTable>},
    {65, L"AcDbViewportTableRecord", describe<AcDbSymbolTableRecord>},
    {66, L"AcDbRegAppTable", describe<AcDbSymbolTable>},
    {67, L"AcDbRegAppTableRecord", describe<AcDbSymbolTableRecord>},
    {68, L"AcDbDimStyleTable", describe<AcDbSymbolTable>},
    {69, L"AcDbDimStyleTableRecord", describe<AcDbSymbolTableRecord>},
    {72, L"AcDbGroup", describe<AcDbObject>},
    {73, L"AcDbMlineStyle", describe<AcDbObject>},
    {74, L"AcDbOle2Frame", describe<AcDbEntity>},
    {77, L"AcDbPolyline", curve},
    {78, L"AcDbHatch", describe<AcDbEntity>},
    {79, L"AcDbXrecord", describe<AcDbObject>},
    {80, L"AcDbPlaceHolder", describe<AcDbObject>},
    {81, L"AcDbVbaProject", describe<AcDbObject>},
    {82, L"AcDbLayout", describe<AcDbObject>},
    {498, L"AcDbProxyEntity", describe<AcDbEntity>},
    {499, L"AcDbProxyObject", describe<AcDbObject>},
};

const AcRxClass* classOfRow(const TypeRow& row) {
    return row.name == nullptr ? row.relative() : Registry::instance().get(row.name, row.relative());
}

/// Parents of classes that objects of no fixed type have, where they aren't the entity or object alone.
struct ClassRow {
    const wchar_t* name;
    const wchar_t* parent;
};

constexpr ClassRow classRows[] = {
    {L"AcDbWipeout", L"AcDbRasterImage"},
    {L"AcDbHelix", L"AcDbSpline"},
    {L"AcDbExtrudedSurface", L"AcDbSurface"},
    {L"AcDbLoftedSurface", L"AcDbSurface"},
    {L"AcDbRevolvedSurface", L"AcDbSurface"},
    {L"AcDbSweptSurface", L"AcDbSurface"},
    {L"AcDbPlaneSurface", L"AcDbSurface"},
    {L"AcDbPdfReference", L"AcDbUnderlayReference"},
    {L"AcDbDwfReference", L"AcDbUnderlayReference"},
    {L"AcDbDgnReference", L"AcDbUnderlayReference"},
    {L"AcDbDictionaryWithDefault", L"AcDbDictionary"},
};

bool isDimensionName(const std::wstring& name) {
    return name.ends_with(L"Dimension") || name == L"AcDbRadialDimensionLarge";
}

} // namespace

const AcRxClass* classOfType(std::uint16_t type) {
    const auto row = std::find_if(std::begin(typeRows), std::end(typeRows),
                                  [type](const TypeRow& candidate) { return candidate.type == type; });
    if (row == std::end(typeRows))
        return AcDbObject::desc();
    return classOfRow(*row);
}

const AcRxClass* classOfName(const std::wstring& name, bool isEntity) {
    const auto fixed =
        std::ranges::find_if(typeRows, [&](const TypeRow& row) { return row.name != nullptr && name == row.name; });
    if (fixed != std::end(typeRows))
        return classOfRow(*fixed);
    const auto derived = std::ranges::find_if(classRows, [&](const ClassRow& row) { return name == row.name; });
    const AcRxClass* parent = isEntity ? AcDbEntity::desc() : AcDbObject::desc();
    if (derived != std::end(classRows))
        parent = classOfName(derived->parent, isEntity);
    else if (isEntity && isDimensionName(name))
        parent = AcDbDimension::desc();
    return Registry::instance().get(name, parent);
}

} // namespace editor
