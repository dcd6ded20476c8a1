#pragma once

#include "editor/dwg/model.h"
#include "editor/sdk/db.h"

#include <memory>

/// What stands behind an AcDbObject: its object in the drawing and who has it open. A new object that is in no
/// database yet keeps its dwg::Object itself.
struct AcDbObject::Impl {
    const AcRxClass* rxClass = nullptr;
    AcDbDatabase* database = nullptr;
    dwg::Object* object = nullptr;
    std::unique_ptr<dwg::Object> own;
    int readers = 0;
    bool writing = false;

    /// A new object, which its maker may write.
    static std::unique_ptr<Impl> fresh(const AcRxClass* rxClass, std::uint16_t type, dwg::Body body);
    static std::unique_ptr<Impl> freshEntity(const AcRxClass* rxClass, std::uint16_t type, dwg::Body body);

    template <class T> T* body() { return object->as<T>(); }
    template <class T> const T* body() const { return object->as<T>(); }
    /// Objects outside a database are always writable.
    bool writable() const { return database == nullptr || writing; }
};

namespace editor {

/// The interface object for an object of a drawing, of the C++ class that serves its type.
std::unique_ptr<AcDbObject> makeInterfaceObject(AcDbDatabase* database, const dwg::Drawing& drawing,
                                                dwg::Object& object);

/// The common beginning of a symbol table record; null for other objects.
dwg::RecordHead* recordHead(dwg::Object& object);
const dwg::RecordHead* recordHead(const dwg::Object& object);

inline AcGePoint3d toPoint(dwg::Point3 point) {
    return {point.x, point.y, point.z};
}
inline AcGeVector3d toVector(dwg::Point3 point) {
    return {point.x, point.y, point.z};
}
inline dwg::Point3 fromPoint(const AcGePoint3d& point) {
    return {point.x, point.y, point.z};
}
inline dwg::Point3 fromVector(const AcGeVector3d& vector) {
    return {vector.x, vector.y, vector.z};
}

} // namespace editor
