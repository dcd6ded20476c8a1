#pragma once

#include "editor/dwg/bits.h"
#include "editor/dwg/body.h"
#include "editor/dwg/color.h"
#include "editor/dwg/object_types.h"
#include "editor/dwg/result.h"
#include "editor/dwg/version.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// A drawing in memory: objects by handle, with links that are kept in both directions on writing only.
///
/// Who owns whom: the Drawing owns its Objects; everything else names objects by handle, so a reference may lead
/// nowhere and is checked where it is followed. An Object stays at its address until it is removed. One thread at a
/// time.
///
/// Changing an object is changing its fields and then calling Object::changed(), without which the writer stores the
/// record that was read.
namespace dwg {

/// Extended data of one application, its values kept as stored.
struct ExtendedData {
    HandleRef application{handle_code::hardPointer};
    std::vector<std::uint8_t> data;
    bool operator==(const ExtendedData&) const = default;
};

/// How an entity gets its linetype or plot style.
enum class ByWhat : std::uint8_t { layer = 0, block = 1, continuous = 2, handle = 3 };

/// Where an entity lies: in the block record or entity that Object::owner names, or in one of the two spaces.
enum class Space : std::uint8_t { owner = 0, paper = 1, model = 2 };

/// What entities have from 2004, 2007 or 2010 on, and few have otherwise than by layer.
struct EntityExtras {
    /// Whether EntityData::color comes from a book, and its colour there; counts for true colours only.
    bool hasBookColor = false;
    HandleRef bookColor{handle_code::hardPointer};
    /// As stored; nothing for by layer.
    std::optional<std::uint32_t> transparency;
    ByWhat materialFrom = ByWhat::layer;
    HandleRef material{handle_code::hardPointer};
    /// 0 casts and receives shadows; with 3 a reference is stored.
    static constexpr std::uint8_t shadowByReference = 3;
    std::uint8_t shadow = 0;
    HandleRef shadowObject{handle_code::hardPointer};
    /// Full, of faces, of edges; null without.
    HandleRef fullStyle{handle_code::hardPointer}, faceStyle{handle_code::hardPointer},
        edgeStyle{handle_code::hardPointer};
    bool operator==(const EntityExtras&) const = default;
};

/// What all entities have. Its references follow their own rules: see the comments.
struct EntityData {
    Space space = Space::owner;
    Color color;
    double linetypeScale = 1;
    HandleRef layer{handle_code::hardPointer};
    ByWhat linetypeFrom = ByWhat::layer;
    /// Counts with ByWhat::handle only.
    HandleRef linetype{handle_code::hardPointer};
    ByWhat plotStyleFrom = ByWhat::layer;
    HandleRef plotStyle{handle_code::hardPointer};
    /// Bit 0: invisible.
    std::uint16_t invisibility = 0;
    /// Index of a lineweight: 29 by layer, 30 by block, 31 default.
    std::uint8_t lineweight = 29;
    /// Picture of a proxy, or preview data of a class, as stored.
    std::optional<std::vector<std::uint8_t>> graphics;
    /// The neighbours in the chain as stored by releases up to 2000. With noLinks they are the handles just below and
    /// above, and not stored. linkEntities() brings them in line with the order of entities.
    bool noLinks = true;
    HandleRef previous{handle_code::softPointer}, next{handle_code::softPointer};
    Rare<EntityExtras> extras;
    bool operator==(const EntityData&) const = default;
};

struct Object {
    Handle handle = 0;
    /// Number of the type; from 500 on a class of the drawing it lies in. What is fixed since 2000 bears the fixed
    /// number in drawings of R13 and R14 too, where it is stored as a class.
    std::uint16_t type = 0;
    /// For an entity that lies in model or paper space the block record of that space, else as stored.
    HandleRef owner{handle_code::softPointer};
    std::vector<HandleRef> reactors;
    HandleRef extensionDictionary{handle_code::hardOwner};
    std::vector<ExtendedData> extendedData;
    /// Present for entities.
    std::optional<EntityData> entity;
    Body body;
    /// Some writers store every text with its closing null; then they are written so again.
    bool closedTexts = false;
    /// From 2013 on: further data of the object lies in a section of its own.
    bool hasBinaryData = false;
    /// The object as read, without length and check; empty for an object that is new or was changed. From 2010 on it
    /// begins with the size of the references, which the length doesn't count.
    std::vector<std::uint8_t> record;

    bool isEntity() const { return entity.has_value(); }
    template <class T> T* as() { return body.as<T>(); }
    template <class T> const T* as() const { return body.as<T>(); }
    /// From now on the object is encoded from its fields when it is written.
    void changed() { record.clear(); }
};

/// A class of objects that isn't among the fixed types.
struct ObjectClass {
    static constexpr std::uint16_t entityItem = 0x1F2;
    static constexpr std::uint16_t objectItem = 0x1F3;

    std::uint16_t number = 0;
    std::uint16_t proxyFlags = 0;
    std::wstring application, cppName, dxfName;
    bool wasProxy = false;
    std::uint16_t item = objectItem;
    /// From 2004 on: how many objects of the class there are, the release and maintenance number it comes from, and
    /// two unknown numbers.
    std::uint32_t instances = 0;
    std::uint32_t dwgVersion = 0, maintenance = 0;
    std::array<std::uint32_t, 2> unknown{};

    bool isEntity() const { return item == entityItem; }
    bool operator==(const ObjectClass&) const = default;
};

class Drawing {
public:
    Release release = Release::r2000;
    /// Number of the code page of narrow text, as the file header counts.
    std::uint16_t codePage = 30;
    /// By number, ascending.
    std::vector<ObjectClass> classes;
    /// Damage met while reading; of very much damage only the beginning.
    Findings findings;

    Drawing() = default;
    Drawing(Drawing&&) = default;
    Drawing& operator=(Drawing&&) = default;

    Object* find(Handle handle);
    const Object* find(Handle handle) const;
    Object* find(HandleRef reference) { return find(reference.value); }
    const Object* find(HandleRef reference) const { return find(reference.value); }
    /// The object's body where it exists and is a T.
    template <class T> T* body(HandleRef reference) {
        Object* object = find(reference);
        return object == nullptr ? nullptr : object->as<T>();
    }
    template <class T> const T* body(HandleRef reference) const {
        const Object* object = find(reference);
        return object == nullptr ? nullptr : object->as<T>();
    }

    /// All objects by ascending handle.
    const std::vector<std::unique_ptr<Object>>& objects() const { return byHandle; }
    /// Null, and the drawing unchanged, for handle 0 or a handle that is taken.
    Object* add(Object object);
    void remove(Handle handle);
    /// A handle that is above all handles of the drawing and was never given before.
    Handle newHandle();
    /// The next handle to be given. A reader raises it to the seed of the header.
    Handle handleSeed() const { return seed; }
    void raiseHandleSeed(Handle atLeast);

    /// The first object of a fixed type, which for a table's type is the table; null without one.
    Object* firstOfType(std::uint16_t type);
    const Object* firstOfType(std::uint16_t type) const;
    const BlockControl* blocks() const;
    /// Block records of the two spaces; 0 without a block table.
    Handle modelSpace() const;
    Handle paperSpace() const;
    /// The dictionary that all others hang on; null without one.
    Object* namedObjects();
    const Object* namedObjects() const;

    const ObjectClass* classOf(const Object& object) const;
    /// The number of the class of this name, adding it when the drawing hasn't got it.
    std::uint16_t classNumber(const ObjectClass& wanted);

    /// Makes `owner`, a block record or an entity, the owner of an entity, as references and space have it. Lists of
    /// entities and parts are the caller's.
    void setOwner(Object& entity, Handle owner) const;

private:
    std::vector<std::unique_ptr<Object>> byHandle;
    std::unordered_map<Handle, Object*> index;
    Handle seed = 1;
};

/// "LINE", "DIMENSION_LINEAR", the class's own name, or "UNKNOWN_ENT"/"UNKNOWN_OBJ" where the drawing has no class of
/// that number.
std::string typeName(const Drawing& drawing, const Object& object);

/// "object 1F", as findings name their place.
std::string objectPlace(Handle handle);

/// The chain of an insertion or polyline; null for any other object.
OwnedChain* ownedChain(Object& object);
const OwnedChain* ownedChain(const Object& object);

/// Brings what releases up to 2000 store about the order of entities (ends of chains, neighbours) in line with
/// BlockHeader::entities and OwnedChain::parts. Objects for which that is a change are marked as changed. Call before
/// writing.
void linkEntities(Drawing& drawing);

/// Replaces every reference that the object holds (owner, reactors, layer, those of its body and applications of
/// extended data; not its own handle, no handles among the values of extended data and of records) by what `map` gives
/// for it; 0 makes it null. Lists of entities and parts likewise, without the null ones, and so the boundaries of a
/// hatch, which is associative only while it has all of them. Marks the object as changed.
void mapReferences(Object& object, const std::function<Handle(Handle)>& map);

} // namespace dwg
