#pragma once

#include "editor/dwg/code_page.h"
#include "editor/dwg/model.h"

#include <functional>

/// The three ways to walk the fields of an object: reading, writing, and visiting its references. One function template
/// `transfer(Stream&, Body&)` for each body serves all three; what is stored only under a condition is told apart by
/// `Stream::reading` and `Stream::writing`.
///
/// References go to a stream of their own, which lies behind the data, and so do texts from 2007 on: the order between
/// data, texts and references doesn't matter, only that within each. What only some releases store stands under
/// `Stream::since` and `Stream::until`, which are both true for visiting: no reference stands under two of them.
namespace dwg {

class ObjectReader {
public:
    static constexpr bool reading = true;
    static constexpr bool writing = false;

    /// `memory` in bytes is what the lists of the object may take, null for no limit but the record's; what they take
    /// is subtracted.
    ObjectReader(Release stored, Handle handle, const CodePage& page, std::size_t* memory = nullptr)
        : release(stored), own(handle), codePage(page), allowance(memory) {}

    bool failed() const { return data.failed() || texts.failed() || handles.failed(); }
    /// Whether what is stored from or up to a release is stored here.
    bool since(Release first) const { return release >= first; }
    bool until(Release last) const { return release <= last; }

    void b(bool& value) { value = data.b(); }
    template <class T> void bb(T& value) { value = static_cast<T>(data.bb()); }
    void bs(std::uint16_t& value) { value = data.bs(); }
    void bs(std::int16_t& value) { value = static_cast<std::int16_t>(data.bs()); }
    void bl(std::uint32_t& value) { value = data.bl(); }
    void rc(std::uint8_t& value) { value = data.rc(); }
    void rd(double& value) { value = data.rd(); }
    void bd(double& value) { value = data.bd(); }
    void rd2(Point2& value) { value = data.rd2(); }
    void rd3(Point3& value) { value = data.rd3(); }
    void bd2(Point2& value) { value = data.bd2(); }
    void bd3(Point3& value) { value = data.bd3(); }
    void dd(double& value, double byDefault) { value = data.dd(byDefault); }
    void dd2(Point2& value, Point2 byDefault) { value = data.dd2(byDefault); }
    void dd3(Point3& value, Point3 byDefault) { value = data.dd3(byDefault); }
    void bt(double& value) { value = since(Release::r2000) ? data.bt() : data.bd(); }
    void be(Point3& value) { value = since(Release::r2000) ? data.be() : data.bd3(); }
    void t(std::wstring& value) {
        value = since(Release::r2007) ? texts.tu() : codePage.decode(data.t());
        if (!value.empty() && value.back() == L'\0') {
            value.pop_back();
            closedTexts = true;
        }
        if (!allows<std::wstring>(value.size()))
            data.fail();
    }
    void cmc(NamedColor& value);
    /// The colour of an entity; the reference of one from a book stands ahead of the layer.
    void entityColor(EntityData& entity);
    void h(HandleRef& value) { value = resolved(handles.h(), own); }
    void raw(std::vector<std::uint8_t>& value, std::size_t count) { value = data.bytes(count); }

    /// The number of elements that follow, each of at least `leastBits` in the data stream.
    template <class Vector> void sizeBl(Vector& vector, std::size_t leastBits) { resize(vector, data.bl(), leastBits); }
    template <class Vector> void sizeRc(Vector& vector, std::size_t leastBits) { resize(vector, data.rc(), leastBits); }
    template <class Vector> void sizeBs(Vector& vector, std::size_t leastBits) { resize(vector, data.bs(), leastBits); }
    /// The number of elements that follow, each a reference in the other stream or with one there.
    template <class Vector> void sizeOfItems(Vector& vector) { resizeItems(vector, data.bl()); }
    template <class Vector> void resizeItems(Vector& vector, std::size_t count) {
        constexpr std::size_t leastBits = 8;
        if (count > handles.remaining() / leastBits || !allows<Vector>(count))
            handles.fail();
        else
            vector.resize(count);
    }
    /// As many references as there are. Fewer than eight bits left are filling.
    void referencesToEnd(std::vector<HandleRef>& references) {
        std::size_t count = 0;
        for (BitReader ahead = handles; ahead.remaining() >= 8; ++count)
            ahead.h();
        resizeItems(references, count);
        if (handles.failed())
            return;
        for (HandleRef& reference : references)
            h(reference);
    }
    void restOfData(Bits& bits) { bits = data.bits(data.remaining()); }
    void restOfTexts(Bits& bits) { bits = texts.bits(texts.remaining()); }

    const Release release;
    /// What isn't among the data lies behind: texts (from 2007 on) and references.
    BitReader data, texts, handles;
    Handle own;
    const CodePage& codePage;
    /// Whether a text ended in a null.
    bool closedTexts = false;

    template <class Vector> void resize(Vector& vector, std::size_t count, std::size_t leastBits) {
        if (count > data.remaining() / leastBits || !allows<Vector>(count))
            data.fail();
        else
            vector.resize(count);
    }

private:
    template <class Vector> bool allows(std::size_t count) {
        const std::size_t bytes = count * sizeof(typename Vector::value_type);
        if (allowance == nullptr)
            return true;
        if (bytes > *allowance)
            return false;
        *allowance -= bytes;
        return true;
    }

    std::size_t* allowance;
};

class ObjectWriter {
public:
    static constexpr bool reading = false;
    static constexpr bool writing = true;

    ObjectWriter(Release stored, const Object& object, const CodePage& page)
        : release(stored), own(object.handle), codePage(page), closedTexts(object.closedTexts) {}

    bool since(Release first) const { return release >= first; }
    bool until(Release last) const { return release <= last; }

    void b(bool value) { data.b(value); }
    template <class T> void bb(T value) { data.bb(static_cast<std::uint8_t>(value)); }
    void bs(std::uint16_t value) { data.bs(value); }
    void bs(std::int16_t value) { data.bs(static_cast<std::uint16_t>(value)); }
    void bl(std::uint32_t value) { data.bl(value); }
    void rc(std::uint8_t value) { data.rc(value); }
    void rd(double value) { data.rd(value); }
    void bd(double value) { data.bd(value); }
    void rd2(Point2 value) { data.rd2(value); }
    void rd3(Point3 value) { data.rd3(value); }
    void bd2(Point2 value) { data.bd2(value); }
    void bd3(Point3 value) { data.bd3(value); }
    void dd(double value, double byDefault) { data.dd(value, byDefault); }
    void dd2(Point2 value, Point2 byDefault) { data.dd2(value, byDefault); }
    void dd3(Point3 value, Point3 byDefault) { data.dd3(value, byDefault); }
    void bt(double value) { since(Release::r2000) ? data.bt(value) : data.bd(value); }
    void be(Point3 value) { since(Release::r2000) ? data.be(value) : data.bd3(value); }
    void t(std::wstring value);
    void cmc(const NamedColor& value);
    void entityColor(const EntityData& entity);
    void h(HandleRef value) { handles.h(stored(value, own)); }
    void raw(const std::vector<std::uint8_t>& value, std::size_t) { data.append(value); }

    template <class Vector> void sizeBl(const Vector& vector, std::size_t) {
        data.bl(static_cast<std::uint32_t>(vector.size()));
    }
    template <class Vector> void sizeRc(const Vector& vector, std::size_t) {
        data.rc(static_cast<std::uint8_t>(vector.size()));
    }
    template <class Vector> void sizeBs(const Vector& vector, std::size_t) {
        data.bs(static_cast<std::uint16_t>(vector.size()));
    }
    template <class Vector> void sizeOfItems(const Vector& vector) {
        data.bl(static_cast<std::uint32_t>(vector.size()));
    }
    void referencesToEnd(const std::vector<HandleRef>& references) {
        for (const HandleRef reference : references)
            h(reference);
    }
    void restOfData(const Bits& bits) { data.append(bits); }
    void restOfTexts(const Bits& bits) { texts.append(bits); }

    const Release release;
    BitWriter data, texts, handles;
    Handle own;
    const CodePage& codePage;
    bool closedTexts;
};

/// Visits the references of a body and nothing else.
class ReferenceVisitor {
public:
    static constexpr bool reading = false;
    static constexpr bool writing = false;

    explicit ReferenceVisitor(const std::function<void(HandleRef&)>& visitor) : visit(visitor) {}

    /// All references are visited, whatever release stores them.
    static constexpr bool since(Release) { return true; }
    static constexpr bool until(Release) { return true; }

    template <class T> void b(T&&) {}
    template <class T> void bb(T&&) {}
    template <class T> void bs(T&&) {}
    template <class T> void bl(T&&) {}
    template <class T> void rc(T&&) {}
    template <class T> void rd(T&&) {}
    template <class T> void bd(T&&) {}
    template <class T> void rd2(T&&) {}
    template <class T> void rd3(T&&) {}
    template <class T> void bd2(T&&) {}
    template <class T> void bd3(T&&) {}
    template <class T> void dd(T&&, double) {}
    template <class T> void dd2(T&&, Point2) {}
    template <class T> void dd3(T&&, Point3) {}
    template <class T> void bt(T&&) {}
    template <class T> void be(T&&) {}
    template <class T> void t(T&&) {}
    template <class T> void cmc(T&&) {}
    template <class T> void raw(T&&, std::size_t) {}
    template <class T> void sizeBl(T&&, std::size_t) {}
    template <class T> void sizeRc(T&&, std::size_t) {}
    template <class T> void sizeBs(T&&, std::size_t) {}
    template <class T> void sizeOfItems(T&&) {}
    template <class T> void restOfData(T&&) {}
    template <class T> void restOfTexts(T&&) {}
    void h(HandleRef& value) { visit(value); }
    void referencesToEnd(std::vector<HandleRef>& references) {
        for (HandleRef& reference : references)
            visit(reference);
    }

private:
    const std::function<void(HandleRef&)>& visit;
};

/// What stands between the extended data (and the picture) of an object and its body. For reading and writing.
template <class Stream> void transferCommon(Stream& stream, Object& object);

/// The picture of an entity, ahead of that.
void readGraphics(ObjectReader& stream, std::optional<std::vector<std::uint8_t>>& graphics);
void writeGraphics(ObjectWriter& stream, const std::optional<std::vector<std::uint8_t>>& graphics);

/// The fields of a body after the data that all objects have. Defined, with the three streams, in the file of the
/// body's subject. `type` is the object's type number: some bodies serve several types.
#define DWG_DECODED_BODIES(X)                                                                                          \
    X(Line)                                                                                                            \
    X(Circle)                                                                                                          \
    X(Arc)                                                                                                             \
    X(Ellipse)                                                                                                         \
    X(PointEntity)                                                                                                     \
    X(Solid)                                                                                                           \
    X(Face3d)                                                                                                          \
    X(Ray)                                                                                                             \
    X(LightweightPolyline)                                                                                             \
    X(Text)                                                                                                            \
    X(Attribute)                                                                                                       \
    X(AttributeDefinition)                                                                                             \
    X(MultilineText)                                                                                                   \
    X(Insert)                                                                                                          \
    X(Polyline2d)                                                                                                      \
    X(Polyline3d)                                                                                                      \
    X(PolyfaceMesh)                                                                                                    \
    X(PolygonMesh)                                                                                                     \
    X(Vertex2d)                                                                                                        \
    X(Vertex3d)                                                                                                        \
    X(PolyfaceFace)                                                                                                    \
    X(BlockBegin)                                                                                                      \
    X(BlockEnd)                                                                                                        \
    X(SequenceEnd)                                                                                                     \
    X(Dimension)                                                                                                       \
    X(Hatch)                                                                                                           \
    X(Spline)                                                                                                          \
    X(Leader)                                                                                                          \
    X(TableControl)                                                                                                    \
    X(BlockControl)                                                                                                    \
    X(BlockHeader)                                                                                                     \
    X(Layer)                                                                                                           \
    X(Linetype)                                                                                                        \
    X(TextStyle)                                                                                                       \
    X(ViewportRecord)                                                                                                  \
    X(ApplicationRecord)                                                                                               \
    X(OtherRecord)                                                                                                     \
    X(Dictionary)                                                                                                      \
    X(DataRecord)                                                                                                      \
    X(Placeholder)                                                                                                     \
    X(Layout)                                                                                                          \
    X(Carried)

#define DWG_DECLARE_TRANSFER(T) template <class Stream> void transfer(Stream& stream, T& body, std::uint16_t type);
DWG_DECODED_BODIES(DWG_DECLARE_TRANSFER)
#undef DWG_DECLARE_TRANSFER

/// A body of the kind that objects of this type have, with nothing in it; Carried for types that aren't decoded.
Body emptyBody(std::uint16_t type, const ObjectClass* objectClass);

/// Makes the transfer of one body for the three streams.
#define DWG_INSTANTIATE_TRANSFER(T)                                                                                    \
    template void transfer(ObjectReader&, T&, std::uint16_t);                                                          \
    template void transfer(ObjectWriter&, T&, std::uint16_t);                                                          \
    template void transfer(ReferenceVisitor&, T&, std::uint16_t)

} // namespace dwg
