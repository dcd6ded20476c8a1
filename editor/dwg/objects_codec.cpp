#include "editor/dwg/objects_codec.h"

#include "editor/dwg/objects_stream.h"

#include <algorithm>

namespace dwg {

namespace {

const ObjectClass* findClass(const ObjectContext& context, std::uint16_t type) {
    if (context.classes == nullptr || type < object_type::firstClass)
        return nullptr;
    const auto found = std::ranges::find(*context.classes, type, &ObjectClass::number);
    return found == context.classes->end() ? nullptr : &*found;
}

Body emptyBodyOfClass(const std::wstring& name) {
    if (name == L"XRECORD")
        return DataRecord{};
    if (name == L"LAYOUT")
        return Layout{};
    if (name == L"ACDBPLACEHOLDER")
        return Placeholder{};
    if (name == L"ACDBDICTIONARYWDFLT") {
        Dictionary dictionary;
        dictionary.hasDefault = true;
        return dictionary;
    }
    return Carried{};
}

Body emptyBody(std::uint16_t type, const ObjectClass* objectClass) {
    using namespace object_type;
    switch (type) {
    case text:
        return Text{};
    case attribute:
        return Attribute{};
    case attributeDefinition:
        return AttributeDefinition{};
    case block:
        return BlockBegin{};
    case endBlock:
        return BlockEnd{};
    case sequenceEnd:
        return SequenceEnd{};
    case insert:
    case multipleInsert:
        return Insert{};
    case vertex2d:
        return Vertex2d{};
    case vertex3d:
    case meshVertex:
    case polyfaceVertex:
        return Vertex3d{};
    case polyfaceFace:
        return PolyfaceFace{};
    case polyline2d:
        return Polyline2d{};
    case polyline3d:
        return Polyline3d{};
    case arc:
        return Arc{};
    case circle:
        return Circle{};
    case line:
        return Line{};
    case point:
        return PointEntity{};
    case face3d:
        return Face3d{};
    case polyface:
        return PolyfaceMesh{};
    case polygonMesh:
        return PolygonMesh{};
    case solid:
    case trace:
        return Solid{};
    case ellipse:
        return Ellipse{};
    case ray:
    case constructionLine:
        return Ray{};
    case dictionary:
        return Dictionary{};
    case multilineText:
        return MultilineText{};
    case blockControl:
        return BlockControl{};
    case blockHeader:
        return BlockHeader{};
    case layerControl:
    case styleControl:
    case linetypeControl:
    case viewControl:
    case ucsControl:
    case viewportControl:
    case applicationControl:
    case viewportEntityControl:
        return TableControl{};
    case layer:
        return Layer{};
    case style:
        return TextStyle{};
    case linetype:
        return Linetype{};
    case viewportRecord:
        return ViewportRecord{};
    case application:
        return ApplicationRecord{};
    case view:
    case ucs:
    case dimensionStyle:
    case viewportEntityHeader:
        return OtherRecord{};
    case lightweightPolyline:
        return LightweightPolyline{};
    case record:
        return DataRecord{};
    case placeholder:
        return Placeholder{};
    case layout:
        return Layout{};
    default:
        return objectClass == nullptr ? Body{Carried{}} : emptyBodyOfClass(objectClass->dxfName);
    }
}

bool isEntityType(std::uint16_t type, const ObjectClass* objectClass) {
    return objectClass != nullptr ? objectClass->isEntity() : isFixedEntity(type);
}

void readExtendedData(ObjectReader& s, Object& object) {
    while (const std::size_t size = s.data.bs()) {
        ExtendedData values;
        // The application stands among the data, unlike all other references.
        values.application = resolved(s.data.h(), object.handle);
        values.data = s.data.bytes(size);
        if (s.data.failed())
            return;
        object.extendedData.push_back(std::move(values));
    }
}

void writeExtendedData(ObjectWriter& s, const Object& object) {
    for (const ExtendedData& values : object.extendedData) {
        if (values.data.empty())
            continue;
        s.bs(static_cast<std::uint16_t>(values.data.size()));
        s.data.h(stored(values.application, object.handle));
        s.data.append(values.data);
    }
    s.bs(std::uint16_t{0});
}

template <class Stream> void transferGraphics(Stream& s, std::optional<std::vector<std::uint8_t>>& graphics) {
    bool present = graphics.has_value();
    s.b(present);
    if (!present)
        return;
    if constexpr (Stream::reading) {
        graphics = s.data.bytes(s.data.rl());
    } else if constexpr (Stream::writing) {
        s.data.rl(static_cast<std::uint32_t>(graphics->size()));
        s.data.append(*graphics);
    }
}

template <class Stream> void transferOwnership(Stream& s, Object& object, bool ownerIsStored) {
    if (ownerIsStored)
        s.h(object.owner);
    for (HandleRef& reactor : object.reactors)
        s.h(reactor);
    s.h(object.extensionDictionary);
}

/// What stands between the object's handle or extended data and its body.
template <class Stream> void transferCommon(Stream& s, Object& object) {
    if (!object.entity) {
        s.sizeOfItems(object.reactors);
        transferOwnership(s, object, true);
        return;
    }
    EntityData& entity = *object.entity;
    transferGraphics(s, entity.graphics);
    s.bb(entity.space);
    s.sizeOfItems(object.reactors);
    s.b(entity.noLinks);
    s.cmc(entity.color);
    s.bd(entity.linetypeScale);
    s.bb(entity.linetypeFrom);
    s.bb(entity.plotStyleFrom);
    s.bs(entity.invisibility);
    s.rc(entity.lineweight);
    transferOwnership(s, object, entity.space == Space::owner);
    if (!entity.noLinks) {
        s.h(entity.previous);
        s.h(entity.next);
    }
    s.h(entity.layer);
    if (entity.linetypeFrom == ByWhat::handle)
        s.h(entity.linetype);
    if (entity.plotStyleFrom == ByWhat::handle)
        s.h(entity.plotStyle);
}

template <class Stream> void transferBody(Stream& s, Body& body, std::uint16_t type) {
    std::visit([&s, type](auto& known) { transfer(s, known, type); }, body);
}

/// What the format has no room for; null where it has room for all.
const char* reasonNotStored(const Object& object) {
    constexpr std::size_t mostExtendedData = 0xFFFF;
    constexpr std::size_t mostDashes = 0xFF;
    for (const ExtendedData& values : object.extendedData) {
        if (values.data.size() > mostExtendedData)
            return " has more extended data of one application than can be stored";
    }
    if (const auto* const linetype = object.as<Linetype>(); linetype != nullptr && linetype->dashes.size() > mostDashes)
        return " has more dashes than can be stored";
    return nullptr;
}

/// Whether nothing but filling is left.
bool atEnd(const ObjectReader& s) {
    return !s.failed() && s.data.remaining() == 0 && s.handles.remaining() < 8;
}

} // namespace

Result<Object> decodeObject(std::span<const std::uint8_t> record, const ObjectContext& context,
                            std::optional<Finding>* finding) {
    if (context.release != Release::r2000)
        return Error{ErrorKind::unsupported, "release not read at object level yet", 0};
    BitReader head(record);
    Object object;
    object.type = head.bs();
    const std::size_t handlesAt = head.rl();
    object.handle = head.h().value;
    if (head.failed() || handlesAt > record.size() * 8 || handlesAt < head.position())
        return Error{ErrorKind::damaged, "the head of an object can't be", head.position() / 8};

    const ObjectClass* const objectClass = findClass(context, object.type);
    if (isEntityType(object.type, objectClass))
        object.entity.emplace();
    ObjectReader s(record, handlesAt, object.handle, context.codePage);
    s.data.seek(head.position());
    readExtendedData(s, object);
    transferCommon(s, object);
    if (s.failed())
        return Error{ErrorKind::damaged, "the common data of " + objectPlace(object.handle) + " leaves its record",
                     s.data.position() / 8};

    const ObjectReader bodyStart = s;
    object.body = emptyBody(object.type, objectClass);
    transferBody(s, object.body, object.type);
    if (!atEnd(s)) {
        if (finding != nullptr)
            *finding = Finding{objectPlace(object.handle), "a body that doesn't fit its type is carried as it is",
                               bodyStart.data.position() / 8};
        ObjectReader again = bodyStart;
        object.body = Carried{};
        transferBody(again, object.body, object.type);
        if (!atEnd(again))
            return Error{ErrorKind::damaged, "the references of " + objectPlace(object.handle) + " leave its record",
                         again.handles.position() / 8};
    }
    object.closedTexts = s.closedTexts;
    object.record.assign(record.begin(), record.end());
    return object;
}

Result<Bits> encodeObject(const Object& object, const ObjectContext& context) {
    if (context.release != Release::r2000)
        return Error{ErrorKind::unsupported, "release not written at object level yet", 0};
    if (const char* const reason = reasonNotStored(object))
        return Error{ErrorKind::invalid, objectPlace(object.handle) + reason, 0};
    ObjectWriter s(object, context.codePage);
    // The walk is shared with reading, which needs the fields writable; a writer changes none but derived ones.
    Object fields = object;
    s.data.h({0, object.handle});
    writeExtendedData(s, fields);
    transferCommon(s, fields);
    transferBody(s, fields.body, object.type);

    BitWriter record;
    record.bs(object.type);
    const std::size_t sizeBits = 32;
    record.rl(static_cast<std::uint32_t>(record.position() + sizeBits + s.data.position()));
    record.append(s.data.bits());
    record.append(s.handles.bits());
    return record.bits();
}

Result<std::vector<std::uint8_t>> objectRecord(const Object& object, const ObjectContext& context) {
    if (!object.record.empty())
        return object.record;
    Result<Bits> encoded = encodeObject(object, context);
    if (!encoded)
        return encoded.error();
    return std::move(encoded->bytes);
}

void mapReferences(Object& object, const std::function<Handle(Handle)>& map) {
    const std::function<void(HandleRef&)> visit = [&map](HandleRef& reference) {
        if (!reference.isNull())
            reference.value = map(reference.value);
    };
    visit(object.owner);
    for (HandleRef& reactor : object.reactors)
        visit(reactor);
    visit(object.extensionDictionary);
    for (ExtendedData& values : object.extendedData)
        visit(values.application);
    if (object.entity) {
        EntityData& entity = *object.entity;
        for (HandleRef* reference :
             {&entity.layer, &entity.linetype, &entity.plotStyle, &entity.previous, &entity.next})
            visit(*reference);
    }
    ReferenceVisitor visitor(visit);
    transferBody(visitor, object.body, object.type);
    const auto mapMembers = [&map](std::vector<Handle>& members) {
        for (Handle& member : members)
            member = map(member);
        std::erase(members, Handle{0});
    };
    if (auto* const block = object.as<BlockHeader>())
        mapMembers(block->entities);
    if (OwnedChain* const chain = ownedChain(object))
        mapMembers(chain->parts);
    object.changed();
}

} // namespace dwg
