#pragma once

#include "editor/sdk/ge.h"
#include "editor/sdk/rx.h"
#include "editor/sdk/status.h"

#include <cstdint>
#include <memory>
#include <string>

/// The drawing database as the host offers it. All calls give the host's integer statuses (0 = eOk). Objects belong to
/// their database; a pointer from an open call is good until close() and never outlives the database. An object that
/// is left open does no harm: its database can be inserted and destroyed all the same.
///
/// Threads: a database and its objects belong to one thread at a time. The current database belongs to the main thread.

class AcDbDatabase;
class AcDbObject;

namespace AcDb {
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };
enum AcDbDwgVersion {
    kDHL_1015 = 23,
    kDHL_1800 = 25,
    kDHL_1021 = 27,
    kDHL_1024 = 29,
    kDHL_1027 = 31,
    kDHL_1032 = 33,
};
} // namespace AcDb

constexpr const wchar_t* ACDB_MODEL_SPACE = L"*Model_Space";
constexpr const wchar_t* ACDB_PAPER_SPACE = L"*Paper_Space";

/// Names an object of a database: the database and the object's handle. Null names nothing.
struct AcDbObjectId {
    AcDbDatabase* database = nullptr;
    std::uint64_t handle = 0;

    bool isNull() const { return handle == 0; }
    bool operator==(const AcDbObjectId&) const = default;
};

class AcDbObject : public AcRxObject {
public:
    ~AcDbObject() override;
    AcDbObject(const AcDbObject&) = delete;
    AcDbObject& operator=(const AcDbObject&) = delete;

    static AcRxClass* desc();
    /// The object's own class, which may be more special than any that is declared here: "AcDbHatch", "AcDbSpline".
    const AcRxClass* isA() const override;
    AcDbObjectId objectId() const;
    AcDbDatabase* database() const;
    bool isErased() const;
    /// From reading to writing; refused while others read it too.
    int upgradeOpen();
    int downgradeOpen();
    /// Needs an object that is open for write. What is in use is refused with eObjectIsReferenced (a layer, linetype,
    /// text style or block definition that something refers to), what a drawing can't do without with
    /// eCannotBeErasedByCaller (layer "0", the current layer, model space ...). `erasing` false takes an erasure back.
    int erase(bool erasing = true);
    /// A new object that is in no database is closed with eNoDatabase.
    int close();

    struct Impl;
    Impl* impl() const { return state.get(); }

protected:
    explicit AcDbObject(std::unique_ptr<Impl> implementation);

private:
    std::unique_ptr<Impl> state;
};

template <class T> int acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode);
/// Any number may read an object; one may write it while nobody reads. eWasOpenForWrite and eWasOpenForRead tell who is
/// in the way, eWasErased an erased object.
int acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode);

class AcDbEntity : public AcDbObject {
public:
    using AcDbObject::AcDbObject;
    static AcRxClass* desc();

    std::wstring layer() const;
    AcDbObjectId layerId() const;
    int setLayer(const wchar_t* name, bool doSubents = true, bool allowHidden = false);
    int setLayer(AcDbObjectId layer, bool doSubents = true, bool allowHidden = false);
    /// 0 is BYBLOCK, 256 BYLAYER; a true colour gives the nearest index.
    std::uint16_t colorIndex() const;
    int setColorIndex(std::uint16_t index, bool doSubents = true);
    /// The words "BYLAYER" and "BYBLOCK" in upper case, any other linetype by its name as stored.
    std::wstring linetype() const;
    int setLinetype(const wchar_t* name, bool doSubents = true);
    AcDbObjectId blockId() const;
};

class AcDbLine : public AcDbEntity {
public:
    using AcDbEntity::AcDbEntity;
    /// A new line that is in no database yet.
    AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end);
    static AcRxClass* desc();
};

class AcDbCircle : public AcDbEntity {
public:
    using AcDbEntity::AcDbEntity;
    /// A new circle that is in no database yet.
    AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius);
    static AcRxClass* desc();
};

class AcDbText : public AcDbEntity {
public:
    using AcDbEntity::AcDbEntity;
    static AcRxClass* desc();
};

/// Paragraph text; not a kind of AcDbText.
class AcDbMText : public AcDbEntity {
public:
    using AcDbEntity::AcDbEntity;
    static AcRxClass* desc();
};

/// The base of all kinds of dimensions.
class AcDbDimension : public AcDbEntity {
public:
    using AcDbEntity::AcDbEntity;
    static AcRxClass* desc();
};

class AcDbBlockReference : public AcDbEntity {
public:
    using AcDbEntity::AcDbEntity;
    /// A new reference that is in no database yet. `rotation` in radians.
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord);
    static AcRxClass* desc();
    AcDbObjectId blockTableRecord() const;
    AcGePoint3d position() const;
    double rotation() const;
    int setRotation(double radians);
    AcGeVector3d scaleFactors() const;
    int setScaleFactors(const AcGeVector3d& factors);
};

class AcDbSymbolTableRecord : public AcDbObject {
public:
    using AcDbObject::AcDbObject;
    static AcRxClass* desc();
    int getName(std::wstring& name) const;
    int setName(const wchar_t* name);
};

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
    /// A new record that is in no table yet: colour index 7, linetype Continuous.
    AcDbLayerTableRecord();
    static AcRxClass* desc();
    /// Positive also for a layer that is off.
    std::uint16_t colorIndex() const;
    int setColorIndex(std::uint16_t index);
    AcDbObjectId linetypeObjectId() const;
    int setLinetypeObjectId(AcDbObjectId linetype);
    bool isFrozen() const;
    bool isOff() const;
};

class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
    static AcRxClass* desc();
};

/// Walks the entities of a block definition in their order. Starts on the first.
class AcDbBlockTableRecordIterator {
public:
    struct Impl;
    explicit AcDbBlockTableRecordIterator(std::unique_ptr<Impl> implementation);
    ~AcDbBlockTableRecordIterator();
    bool done() const;
    void step(bool forward = true, bool skipErased = true);
    int getEntity(AcDbEntity*& entity, AcDb::OpenMode mode) const;

private:
    std::unique_ptr<Impl> state;
};

class AcDbBlockTableRecord : public AcDbSymbolTableRecord {
public:
    using AcDbSymbolTableRecord::AcDbSymbolTableRecord;
    /// A new, empty definition that is in no table yet.
    AcDbBlockTableRecord();
    static AcRxClass* desc();
    bool isLayout() const;
    bool isAnonymous() const;
    bool isFromExternalReference() const;
    bool isFromOverlayReference() const;
    std::wstring comments() const;
    int setComments(const wchar_t* text);
    AcGePoint3d origin() const;
    int setOrigin(const AcGePoint3d& point);
    int newIterator(AcDbBlockTableRecordIterator*& iterator) const;
    /// Takes ownership of a new entity and makes it part of the definition; the entity is left open for write.
    int appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity);
    int appendAcDbEntity(AcDbEntity* entity);
};

class AcDbSymbolTable;

/// Walks the records of a table in their order. `atBeginning` false starts at the end.
class AcDbSymbolTableIterator {
public:
    struct Impl;
    explicit AcDbSymbolTableIterator(std::unique_ptr<Impl> implementation);
    ~AcDbSymbolTableIterator();
    void start(bool atBeginning = true, bool skipErased = true);
    bool done() const;
    void step(bool forward = true, bool skipErased = true);
    int getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode) const;
    int getRecordId(AcDbObjectId& id) const;

private:
    std::unique_ptr<Impl> state;
};

class AcDbSymbolTable : public AcDbObject {
public:
    using AcDbObject::AcDbObject;
    static AcRxClass* desc();
    int newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true, bool skipErased = true) const;
    /// Look-up by name ignores case.
    int getAt(const wchar_t* name, AcDbObjectId& id) const;
    int getAt(const wchar_t* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode) const;
    bool has(const wchar_t* name) const;
    /// Takes ownership of a new record and leaves it open for write. A name that exists, in whatever case, is refused
    /// with eDuplicateRecordName and the record stays the caller's.
    int add(AcDbObjectId& id, AcDbSymbolTableRecord* record);
    int add(AcDbSymbolTableRecord* record);
};

class AcDbLayerTable : public AcDbSymbolTable {
public:
    using AcDbSymbolTable::AcDbSymbolTable;
    static AcRxClass* desc();
};
class AcDbLinetypeTable : public AcDbSymbolTable {
public:
    using AcDbSymbolTable::AcDbSymbolTable;
    static AcRxClass* desc();
};
class AcDbBlockTable : public AcDbSymbolTable {
public:
    using AcDbSymbolTable::AcDbSymbolTable;
    static AcRxClass* desc();
};

/// The summary of a drawing. Made by acdbGetSummaryInfo, freed by the caller.
class AcDbDatabaseSummaryInfo {
public:
    virtual ~AcDbDatabaseSummaryInfo() = default;
    virtual int getComments(std::wstring& text) const = 0;
    virtual int setComments(const wchar_t* text) = 0;
    virtual int getTitle(std::wstring& text) const = 0;
    virtual int setTitle(const wchar_t* text) = 0;
    virtual AcDbDatabase* database() const = 0;
};

int acdbGetSummaryInfo(AcDbDatabase* database, AcDbDatabaseSummaryInfo*& info);
int acdbPutSummaryInfo(const AcDbDatabaseSummaryInfo* info, AcDbDatabase* database = nullptr);

class AcDbDatabase {
public:
    /// With `buildDefaultDrawing` the database is a new empty drawing, otherwise it waits for readDwgFile.
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase();
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    /// `mode` 1 is reading with sharing for readers. The file is read whole before the call returns.
    int readDwgFile(const wchar_t* file, int mode = 1, bool allowCPConversion = false,
                    const wchar_t* password = nullptr);
    int saveAs(const wchar_t* file, bool bakAndRename = false, AcDb::AcDbDwgVersion version = AcDb::kDHL_1015);
    void setRetainOriginalThumbnailBitmap(bool retain);
    /// The embedded picture of the next save: a bitmap without file header (40-byte header, colours, pixels).
    void setThumbnailBitmap(const std::string& bitmap);

    /// Makes `source`'s model space a block definition here: an existing one of that name is redefined (its record and
    /// so its references stay). The source keeps all it has when `preserveSource` is set.
    int insert(AcDbObjectId& id, const wchar_t* blockName, AcDbDatabase* source, bool preserveSource = true);

    int getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    int getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    int getLinetypeTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode = AcDb::kForRead);

    AcDbObjectId clayer() const;
    int setClayer(AcDbObjectId layer);
    double userr4() const;
    int setUserr4(double value);
    double dimscale() const;
    int setDimscale(double value);
    AcGePoint3d insbase() const;
    int setInsbase(const AcGePoint3d& point);
    /// Number of decimals that the drawing shows lengths with.
    int luprec() const;
    int getFilename(std::wstring& name) const;

    struct Impl;
    Impl* impl() const { return state.get(); }

private:
    std::unique_ptr<Impl> state;
};

class AcDbHostApplicationServices {
public:
    virtual ~AcDbHostApplicationServices() = default;
    /// The database of the current document; null without one.
    virtual AcDbDatabase* workingDatabase() const = 0;
};

AcDbHostApplicationServices* acdbHostApplicationServices();

/// A length as text. `unit` 2 is decimal; `precision` -1 is the current drawing's.
int acdbRToS(double value, int unit, int precision, wchar_t* text, std::size_t size);

template <class T> int acdbOpenObject(T*& object, AcDbObjectId id, AcDb::OpenMode mode) {
    AcDbObject* opened = nullptr;
    const int status = acdbOpenAcDbObject(opened, id, mode);
    if (status != eOk)
        return status;
    object = dynamic_cast<T*>(opened);
    if (object != nullptr)
        return eOk;
    if (opened != nullptr)
        opened->close();
    return Acad::eNotApplicable;
}
