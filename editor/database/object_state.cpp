#include "editor/database/object_state.h"

#include "editor/database/object_classes.h"

namespace {

std::unique_ptr<dwg::Object> newObject(std::uint16_t type, dwg::Body body) {
    auto object = std::make_unique<dwg::Object>();
    object->type = type;
    object->body = std::move(body);
    return object;
}

} // namespace

std::unique_ptr<AcDbObject::Impl> AcDbObject::Impl::fresh(const AcRxClass* rxClass, std::uint16_t type,
                                                          dwg::Body body) {
    auto state = std::make_unique<Impl>();
    state->rxClass = rxClass;
    state->own = newObject(type, std::move(body));
    state->object = state->own.get();
    return state;
}

std::unique_ptr<AcDbObject::Impl> AcDbObject::Impl::freshEntity(const AcRxClass* rxClass, std::uint16_t type,
                                                                dwg::Body body) {
    auto state = fresh(rxClass, type, std::move(body));
    state->object->entity.emplace();
    return state;
}

namespace editor {

namespace {

/// An object that a database opens: of a class whose constructors users see no more than its operations need.
template <class T> class Opened final : public T {
public:
    explicit Opened(std::unique_ptr<AcDbObject::Impl> implementation) : T(std::move(implementation)) {}
};

template <class T> std::unique_ptr<AcDbObject> make(std::unique_ptr<AcDbObject::Impl> state) {
    return std::make_unique<Opened<T>>(std::move(state));
}

std::unique_ptr<AcDbObject> makeEntity(std::unique_ptr<AcDbObject::Impl> state) {
    const AcRxClass& rxClass = *state->rxClass;
    if (rxClass.isDerivedFrom(AcDbLine::desc()))
        return make<AcDbLine>(std::move(state));
    if (rxClass.isDerivedFrom(AcDbCircle::desc()))
        return make<AcDbCircle>(std::move(state));
    if (rxClass.isDerivedFrom(AcDbText::desc()))
        return make<AcDbText>(std::move(state));
    if (rxClass.isDerivedFrom(AcDbMText::desc()))
        return make<AcDbMText>(std::move(state));
    if (rxClass.isDerivedFrom(AcDbDimension::desc()))
        return make<AcDbDimension>(std::move(state));
    if (rxClass.isDerivedFrom(AcDbBlockReference::desc()))
        return make<AcDbBlockReference>(std::move(state));
    return make<AcDbEntity>(std::move(state));
}

const AcRxClass* classOfObject(const dwg::Drawing& drawing, const dwg::Object& object) {
    if (object.type < dwg::object_type::firstClass)
        return classOfType(object.type);
    const dwg::ObjectClass* const found = drawing.classOf(object);
    return classOfName(found != nullptr ? found->cppName : std::wstring(L"AcDbUnknown"), object.isEntity());
}

} // namespace

std::unique_ptr<AcDbObject> makeInterfaceObject(AcDbDatabase* database, const dwg::Drawing& drawing,
                                                dwg::Object& object) {
    using namespace dwg::object_type;
    auto state = std::make_unique<AcDbObject::Impl>();
    state->database = database;
    state->object = &object;
    state->rxClass = classOfObject(drawing, object);
    if (object.isEntity())
        return makeEntity(std::move(state));
    switch (object.type) {
    case blockControl:
        return make<AcDbBlockTable>(std::move(state));
    case layerControl:
        return make<AcDbLayerTable>(std::move(state));
    case linetypeControl:
        return make<AcDbLinetypeTable>(std::move(state));
    case blockHeader:
        return make<AcDbBlockTableRecord>(std::move(state));
    case layer:
        return make<AcDbLayerTableRecord>(std::move(state));
    case linetype:
        return make<AcDbLinetypeTableRecord>(std::move(state));
    default:
        break;
    }
    if (state->rxClass->isDerivedFrom(AcDbSymbolTable::desc()))
        return make<AcDbSymbolTable>(std::move(state));
    if (state->rxClass->isDerivedFrom(AcDbSymbolTableRecord::desc()))
        return make<AcDbSymbolTableRecord>(std::move(state));
    return make<AcDbObject>(std::move(state));
}

const dwg::RecordHead* recordHead(const dwg::Object& object) {
    return object.body.visit([](const auto& body) -> const dwg::RecordHead* {
        if constexpr (requires { body.head; })
            return &body.head;
        else
            return nullptr;
    });
}

dwg::RecordHead* recordHead(dwg::Object& object) {
    return const_cast<dwg::RecordHead*>(recordHead(std::as_const(object)));
}

} // namespace editor
