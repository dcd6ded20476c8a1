#include "tests/mapping_engine/MappingTest.h"

#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"

#include <ostream>

namespace tests {

namespace {

MappingTest* current = nullptr;

/// An entity of a class that the interface can't make.
struct ClassedEntity : AcDbEntity {
    ClassedEntity(const AcRxClass* kind, std::uint16_t type, dwg::Body body)
        : AcDbEntity(Impl::freshEntity(kind, type, std::move(body))) {}
};

AcDbEntity* Made(Kind kind) {
    using namespace dwg::object_type;
    constexpr std::uint16_t kRotatedDimension = 21;
    switch (kind) {
    case Kind::Text:
        return new ClassedEntity(AcDbText::desc(), text, dwg::Text{});
    case Kind::AttributeDefinition: {
        static const AcRxClass derived(L"AcDbAttributeDefinition", AcDbText::desc());
        return new ClassedEntity(&derived, attributeDefinition, dwg::AttributeDefinition{});
    }
    case Kind::MText:
        return new ClassedEntity(AcDbMText::desc(), multilineText, dwg::MultilineText{});
    case Kind::Dimension: {
        static const AcRxClass derived(L"AcDbRotatedDimension", AcDbDimension::desc());
        return new ClassedEntity(&derived, kRotatedDimension, dwg::Carried{});
    }
    case Kind::Line:
        break;
    }
    return new AcDbLine({0, 0, 0}, {1, 1, 0});
}

} // namespace

void PrintTo(const Look& look, std::ostream* out) {
    *out << platform::ToNarrow(look.layer) << " " << look.colour << " " << platform::ToNarrow(look.linetype);
}

MappingTest::MappingTest() : drawing(*host.documents().create().database()) {
    current = this;
    platform::SetMainThread();
    platform::SetUserInterface(this);
    SetNewMapQuestion(Ask);
}

MappingTest::~MappingTest() {
    SetNewMapQuestion(nullptr);
    platform::SetUserInterface(nullptr);
    DeleteSchemes();
    clayerSaved = false;
    current = nullptr;
}

MapScheme MappingTest::MakeScheme(int schemeType, const Maps& maps, bool defaultToByLayer) const {
    constexpr std::wstring_view kVariable = L"Var:";
    MapScheme scheme;
    scheme.schemeType = schemeType;
    scheme.defaultToByLayer = defaultToByLayer;
    for (const auto& [from, to] : maps) {
        const bool isVariable = to.starts_with(kVariable);
        scheme.maps.SetAt(from, isVariable ? to.substr(kVariable.size()) : to);
        if (isVariable)
            scheme.variableMaps.SetAt(from, 1);
    }
    return scheme;
}

MapScheme& MappingTest::Enter(const std::wstring& name, MapScheme scheme) {
    SetScheme(name, new MapScheme(std::move(scheme)));
    return **schemes.Lookup(name);
}

void MappingTest::AddLayer(const std::wstring& name, int colour, const std::wstring& linetype) {
    AcDbLayerTableRecord* layer = nullptr;
    ASSERT_EQ(acdbOpenObject(layer, addLayer(side, name.c_str(), static_cast<std::uint16_t>(colour)), AcDb::kForWrite),
              eOk);
    AcDbLinetypeTable* linetypes = nullptr;
    ASSERT_EQ(side.getLinetypeTable(linetypes), eOk);
    AcDbObjectId id;
    EXPECT_EQ(linetypes->getAt(linetype.c_str(), id), eOk);
    EXPECT_EQ(layer->setLinetypeObjectId(id), eOk);
    linetypes->close();
    layer->close();
}

void MappingTest::AddLinetype(const std::wstring& name) {
    dwg::Linetype body;
    body.head.name = name;
    dwg::Object object;
    object.type = dwg::object_type::linetype;
    object.body = std::move(body);
    AcDbDatabase::Impl& database = *side.impl();
    object.handle = database.drawing.newHandle();
    dwg::Object& table = *database.table(dwg::object_type::linetypeControl);
    object.owner = {dwg::handle_code::softPointer, table.handle};
    database.enter(table, database.drawing.add(std::move(object))->handle);
}

AcDbObjectId MappingTest::Add(Kind kind, const Look& look, const wchar_t* block) {
    const AcDbObjectId id = append(blockNamed(side, block), Made(kind), look.layer.c_str());
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), eOk);
    EXPECT_EQ(entity->setColorIndex(static_cast<std::uint16_t>(look.colour)), eOk);
    EXPECT_EQ(entity->setLinetype(look.linetype.c_str()), eOk);
    entity->close();
    return id;
}

AcDbObjectId MappingTest::AddInsertion(const Look& look, const Names& attributeLayers) {
    const AcDbObjectId id =
        appendToModel(side, new AcDbBlockReference({0, 0, 0}, addBlock(side, L"PART")), look.layer.c_str());
    dwg::Drawing& inside = side.impl()->drawing;
    for (const std::wstring& layer : attributeLayers) {
        dwg::Object attribute;
        attribute.handle = inside.newHandle();
        attribute.type = dwg::object_type::attribute;
        attribute.owner.value = id.handle;
        attribute.entity.emplace();
        attribute.entity->layer.value = layerNamed(side, layer.c_str()).handle;
        attribute.body = dwg::Attribute{};
        inside.body<dwg::Insert>({0, id.handle})->attributes.parts.push_back(inside.add(std::move(attribute))->handle);
    }
    AcDbEntity* entity = nullptr;
    EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), eOk);
    EXPECT_EQ(entity->setColorIndex(static_cast<std::uint16_t>(look.colour), false), eOk);
    EXPECT_EQ(entity->setLinetype(look.linetype.c_str(), false), eOk);
    entity->close();
    return id;
}

Look MappingTest::LookOf(AcDbObjectId id) {
    AcDbEntity* entity = nullptr;
    if (acdbOpenObject(entity, id, AcDb::kForNotify) != eOk)
        return {L"no entity"};
    Look look{entity->layer(), entity->colorIndex(), entity->linetype()};
    entity->close();
    return look;
}

Names MappingTest::LayersOf(AcDbDatabase& database) {
    AcDbLayerTable* table = nullptr;
    EXPECT_EQ(database.getLayerTable(table), eOk);
    Names names = namesOf(*table);
    table->close();
    return names;
}

std::wstring MappingTest::CurrentLayerOf(AcDbDatabase& database) {
    AcDbLayerTableRecord* layer = nullptr;
    std::wstring name;
    if (acdbOpenObject(layer, database.clayer(), AcDb::kForRead) == eOk) {
        layer->getName(name);
        layer->close();
    }
    return name;
}

std::optional<NewMapAnswer> MappingTest::Ask(int schemeType, const std::wstring& fromText) {
    current->asked.emplace_back(schemeType, fromText);
    if (current->answers.empty())
        return std::nullopt;
    const std::optional<NewMapAnswer> answer = current->answers.front();
    current->answers.pop_front();
    return answer;
}

platform::MessageAnswer MappingTest::MessageBox(const std::wstring& text, const std::wstring& caption,
                                                platform::MessageButtons, platform::MessageIcon) {
    EXPECT_EQ(caption, L"Tessaro");
    messages.push_back(text);
    return platform::MessageAnswer::Ok;
}

} // namespace tests
