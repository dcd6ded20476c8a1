#include "editor/dwg/objects_codec.h"

#include "editor/dwg/objects_stream.h"
#include "editor/dwg/text_stream.h"

#include <algorithm>

namespace dwg {

namespace {

const ObjectClass* findClass(const ObjectContext& context, std::uint16_t type) {
    if (context.classes == nullptr || type < object_type::firstClass)
        return nullptr;
    const auto found = std::ranges::lower_bound(*context.classes, type, {}, &ObjectClass::number);
    return found == context.classes->end() || found->number != type ? nullptr : &*found;
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

template <class Stream> void transferBody(Stream& s, Body& body, std::uint16_t type) {
    body.visit([&s, type](auto& known) { transfer(s, known, type); });
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
    return !s.failed() && s.data.remaining() == 0 && s.texts.remaining() == 0 && s.handles.remaining() < 8;
}

/// From 2010 on the most usual types take a byte.
std::uint16_t readType(BitReader& bits, Release release) {
    constexpr std::uint16_t secondHundreds = 0x1F0;
    if (release < Release::r2010)
        return bits.bs();
    switch (bits.bb()) {
    case 0:
        return bits.rc();
    case 1:
        return static_cast<std::uint16_t>(bits.rc() + secondHundreds);
    default:
        return bits.rs();
    }
}

void writeType(BitWriter& bits, std::uint16_t type, Release release) {
    constexpr std::uint16_t secondHundreds = 0x1F0, byteEnd = 0x100;
    if (release < Release::r2010) {
        bits.bs(type);
    } else if (type < byteEnd) {
        bits.bb(0);
        bits.rc(static_cast<std::uint8_t>(type));
    } else if (type >= secondHundreds && type < secondHundreds + byteEnd) {
        bits.bb(1);
        bits.rc(static_cast<std::uint8_t>(type - secondHundreds));
    } else {
        bits.bb(2);
        bits.rs(type);
    }
}

/// Types that are fixed since 2000 and were classes before.
struct EarlyClass {
    std::uint16_t type;
    const wchar_t* name;
};

constexpr EarlyClass earlyClasses[] = {{object_type::lightweightPolyline, L"LWPOLYLINE"},
                                       {object_type::hatch, L"HATCH"},
                                       {object_type::record, L"XRECORD"},
                                       {object_type::placeholder, L"ACDBPLACEHOLDER"},
                                       {object_type::layout, L"LAYOUT"}};

/// The fixed type that an object of a class has in memory.
std::uint16_t typeInMemory(std::uint16_t stored, const ObjectContext& context) {
    const ObjectClass* const objectClass = context.release < Release::r2000 ? findClass(context, stored) : nullptr;
    if (objectClass == nullptr)
        return stored;
    const auto* const early = std::ranges::find(earlyClasses, objectClass->dxfName, &EarlyClass::name);
    return early == std::ranges::end(earlyClasses) ? stored : early->type;
}

/// The reverse. A drawing that has no such class keeps the fixed type.
std::uint16_t storedType(std::uint16_t type, const ObjectContext& context) {
    const auto* const early = std::ranges::find(earlyClasses, type, &EarlyClass::type);
    if (context.release >= Release::r2000 || context.classes == nullptr || early == std::ranges::end(earlyClasses))
        return type;
    const auto found = std::ranges::find(*context.classes, early->name, &ObjectClass::dxfName);
    return found == context.classes->end() ? type : found->number;
}

/// Reads one record. What fails is told by the place that the data stream has come to.
class RecordReader {
public:
    RecordReader(std::span<const std::uint8_t> bytes, const ObjectContext& objectContext)
        : record(bytes), context(objectContext), s(context.release, 0, context.codePage, context.memory) {}

    Result<Object> read(std::optional<Finding>* finding) {
        if (!readHead())
            return Error{ErrorKind::damaged, "the head of an object can't be", s.data.position() / 8};
        const ObjectClass* const objectClass = findClass(context, object.type);
        if (isEntityType(object.type, objectClass))
            object.entity.emplace();
        readExtendedData(s, object);
        if (object.entity)
            readGraphics(s, object.entity->graphics);
        if (context.release < Release::r2000 && !splitAt(s.data.rl()))
            return Error{ErrorKind::damaged,
                         "the references of " + objectPlace(object.handle) + " lie outside its record",
                         s.data.position() / 8};
        transferCommon(s, object);
        if (s.failed())
            return Error{ErrorKind::damaged, "the common data of " + objectPlace(object.handle) + " leaves its record",
                         s.data.position() / 8};
        readBody(emptyBody(object.type, objectClass), finding);
        if (!atEnd(s))
            return Error{ErrorKind::damaged, "the references of " + objectPlace(object.handle) + " leave its record",
                         s.handles.position() / 8};
        object.closedTexts = s.closedTexts;
        object.record.assign(record.begin(), record.end());
        return std::move(object);
    }

private:
    bool readHead() {
        s.data = BitReader(record);
        std::size_t referenceBits = 0;
        if (context.release >= Release::r2010)
            referenceBits = s.data.umc();
        const std::size_t start = s.data.position();
        object.type = typeInMemory(readType(s.data, context.release), context);
        std::size_t handlesAt = record.size() * 8 - std::min(referenceBits, record.size() * 8);
        if (context.release >= Release::r2000 && context.release < Release::r2010)
            handlesAt = start + s.data.rl();
        object.handle = s.own = s.data.h().value;
        return !s.data.failed() && (context.release < Release::r2000 || splitAt(handlesAt));
    }

    /// Parts the record into data, texts and references.
    bool splitAt(std::size_t handlesAt) {
        if (s.data.failed() || handlesAt > record.size() * 8 || handlesAt < s.data.position())
            return false;
        std::size_t dataEnd = handlesAt;
        if (context.release >= Release::r2007) {
            const TextStream stream = textStreamBefore(record, handlesAt);
            dataEnd = stream.start;
            s.texts = stream.texts;
        }
        if (dataEnd < s.data.position())
            return false;
        s.data = BitReader(record, s.data.position(), dataEnd);
        s.handles = BitReader(record, handlesAt, record.size() * 8);
        return true;
    }

    void readBody(Body empty, std::optional<Finding>* finding) {
        const BitReader dataStart = s.data, textsStart = s.texts, handlesStart = s.handles;
        object.body = std::move(empty);
        transferBody(s, object.body, object.type);
        if (atEnd(s))
            return;
        if (finding != nullptr)
            *finding = Finding{objectPlace(object.handle), "a body that doesn't fit its type is carried as it is",
                               dataStart.position() / 8};
        s.data = dataStart;
        s.texts = textsStart;
        s.handles = handlesStart;
        object.body = Carried{};
        transferBody(s, object.body, object.type);
    }

    std::span<const std::uint8_t> record;
    const ObjectContext& context;
    ObjectReader s;
    Object object;
};

/// What is ahead of the number of bits to the references, in R13 and R14, and behind it.
struct Split {
    BitWriter head, rest;
};

/// The record of any release. Texts are put behind the data on the way.
Bits joined(Split& parts, const ObjectWriter& s, std::uint16_t type) {
    constexpr std::size_t sizeBits = 32;
    BitWriter head, record;
    writeType(head, type, s.release);
    if (s.release < Release::r2000) {
        record.append(head);
        record.append(parts.head);
        record.rl(static_cast<std::uint32_t>(record.position() + sizeBits + parts.rest.position()));
        record.append(parts.rest);
        record.append(s.handles);
        return record.take();
    }
    if (s.release >= Release::r2007)
        appendTextStream(parts.rest, s.texts.bits());
    const std::size_t dataBits = parts.head.position() + parts.rest.position();
    if (s.release >= Release::r2010) {
        const std::size_t handlesAt = head.position() + dataBits;
        record.umc(static_cast<std::uint32_t>((handlesAt + s.handles.position() + 7) / 8 * 8 - handlesAt));
    }
    record.append(head);
    if (s.release < Release::r2010)
        record.rl(static_cast<std::uint32_t>(record.position() + sizeBits + dataBits));
    record.append(parts.head);
    record.append(parts.rest);
    record.append(s.handles);
    return record.take();
}

} // namespace

std::uint16_t recordType(std::span<const std::uint8_t> record, Release release) {
    BitReader head(record);
    if (release >= Release::r2010)
        head.umc();
    return readType(head, release);
}

Result<Object> decodeObject(std::span<const std::uint8_t> record, const ObjectContext& context,
                            std::optional<Finding>* finding) {
    return RecordReader(record, context).read(finding);
}

Result<Bits> encodeObject(const Object& object, const ObjectContext& context) {
    if (const char* const reason = reasonNotStored(object))
        return Error{ErrorKind::invalid, objectPlace(object.handle) + reason, 0};
    ObjectWriter s(context.release, object, context.codePage);
    // The walk is shared with reading, which needs the fields writable; a writer changes none but derived ones.
    Object fields = object;
    Split parts;
    s.data.h({0, object.handle});
    writeExtendedData(s, fields);
    if (fields.entity)
        writeGraphics(s, fields.entity->graphics);
    std::swap(parts.head, s.data);
    transferCommon(s, fields);
    transferBody(s, fields.body, object.type);
    std::swap(parts.rest, s.data);
    return joined(parts, s, storedType(object.type, context));
}

Result<std::vector<std::uint8_t>> objectRecord(const Object& object, const ObjectContext& context) {
    if (!object.record.empty())
        return object.record;
    Result<Bits> encoded = encodeObject(object, context);
    if (!encoded)
        return encoded.error();
    return std::move(encoded->bytes);
}

namespace {

/// A hatch that has lost one doesn't follow the others either.
void forgetLostBoundaries(Hatch& hatch) {
    for (Hatch::Path& path : hatch.paths) {
        if (std::erase_if(path.boundaries, [](const HandleRef& boundary) { return boundary.isNull(); }) != 0)
            hatch.associative = false;
    }
}

} // namespace

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
        if (entity.extras) {
            EntityExtras& extras = *entity.extras;
            for (HandleRef* reference : {&extras.bookColor, &extras.material, &extras.shadowObject, &extras.fullStyle,
                                         &extras.faceStyle, &extras.edgeStyle})
                visit(*reference);
        }
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
    if (auto* const hatch = object.as<Hatch>())
        forgetLostBoundaries(*hatch);
    object.changed();
}

} // namespace dwg
