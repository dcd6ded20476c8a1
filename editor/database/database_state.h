#pragma once

#include "editor/database/object_state.h"
#include "editor/database/origin.h"
#include "editor/dwg/convert_drawing.h"
#include "editor/dwg/header_variables.h"
#include "editor/dwg/thumbnail.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace editor {
class Journal;
} // namespace editor

/// A drawing with what its database adds: one interface object for each object that was ever opened, who is erased, and
/// what the next save embeds.
///
/// Interface objects live as long as the database. Erased objects stay in the drawing, so that an erasure can be taken
/// back, until a save drops them for good.
struct AcDbDatabase::Impl {
    explicit Impl(AcDbDatabase& owner) : self(owner) {}

    AcDbDatabase& self;
    dwg::Drawing drawing;
    dwg::HeaderVariables header;
    /// Full path of the file read or saved last; empty for a new drawing.
    std::wstring file;
    /// Pictures of the file that was read.
    std::vector<dwg::Picture> pictures;
    /// 0 for a drawing in inches, 1 for a metric one.
    std::uint16_t measurement = 0;
    /// From 2004 on; up to 2000 the summary is one of the objects.
    dwg::SummaryInfo summary;
    editor::Origin origin;
    /// What the last save to another release had to leave out.
    std::vector<dwg::LeftOut> leftOut;
    bool retainPictures = false;
    std::string givenBitmap;
    /// Remembers changes so that they can be taken back; null where nobody wants that. Everything that changes the
    /// drawing goes through the functions below, which tell it.
    std::shared_ptr<editor::Journal> journal;
    /// The drawings that external references show, by their block records.
    std::unordered_map<dwg::Handle, std::shared_ptr<AcDbDatabase>> references;

    /// Gets ready for a drawing that was just put in place.
    void adopt();
    bool hasDrawing() const { return !tables.empty(); }

    AcDbObjectId id(dwg::Handle handle) const { return {&self, handle}; }
    bool isErased(dwg::Handle handle) const { return erased.contains(handle); }
    /// The object, unless there is none or it is erased.
    const dwg::Object* live(dwg::Handle handle) const;
    dwg::Object* live(dwg::Handle handle);

    /// The object, to be changed; null where there is none.
    dwg::Object* change(dwg::Handle handle);
    /// Makes a new object part of the drawing; its handle is one that newHandle gave.
    dwg::Object& add(dwg::Object object);
    /// A new definition without entities, "*U1", "*U2" ...
    dwg::Object& addAnonymousBlock();
    /// Before a variable in `header` is changed.
    void changeHeader();
    /// Before classes are added to the drawing.
    void changeClasses();

    int open(AcDbObject*& result, dwg::Handle handle, AcDb::OpenMode mode);
    template <class T> int openAs(T*& result, dwg::Handle handle, AcDb::OpenMode mode) {
        AcDbObject* object = nullptr;
        const int status = open(object, handle, mode);
        if (status != eOk)
            return status;
        result = dynamic_cast<T*>(object);
        if (result != nullptr)
            return eOk;
        if (object != nullptr)
            object->close();
        return Acad::eNotApplicable;
    }
    /// Gets ready for so many objects that will be opened.
    void expectOpened(std::size_t more);
    /// Makes a new object part of the drawing under a new handle; its interface object is the database's from here on
    /// and open for write.
    dwg::Object& take(AcDbObject* object);

    /// The table of a type; null in a database without a drawing.
    dwg::Object* table(std::uint16_t type);
    const dwg::Object* table(std::uint16_t type) const;
    /// The records of a table in their order, standing ones first.
    static std::vector<dwg::Handle> records(const dwg::Object& table);
    /// The record of that name, in whatever case; 0 without one. Erased records don't count.
    dwg::Handle findRecord(std::uint16_t tableType, std::wstring_view name) const;
    /// Adds a record's handle to its table.
    void enter(dwg::Object& table, dwg::Handle record);

    /// Gives a new object what its drawing has for it where it says nothing itself: an entity the current layer, a
    /// layer the linetype Continuous, a block definition its frame.
    void complete(dwg::Object& object);
    /// Layer "0", the linetypes ByLayer, ByBlock and Continuous, the spaces, the style Standard ...: no renaming, no
    /// erasing.
    bool isIndispensable(const dwg::Object& object) const;
    /// Gives the frame of a block definition its new name.
    void renameFrame(const dwg::BlockHeader& block, const wchar_t* name);
    /// Whether drawing the definition `from` comes upon the definition `target`, itself included.
    bool draws(dwg::Handle from, dwg::Handle target) const;

    dwg::Handle modelSpace() const { return modelSpaceHandle; }
    dwg::Handle paperSpace() const { return paperSpaceHandle; }

    /// Before the layer of an entity changes, or which entities there are.
    void forgetUsedLayers() { usedLayers.reset(); }
    /// eOk, or why the object may not be erased.
    int refusalToErase(const dwg::Object& object) const;
    void setErased(dwg::Object& object, bool erasing);
    /// Drops erased objects from the drawing, with what refers to them. Their interface objects stay, on objects of
    /// their own, so that pointers to them do no harm.
    void purgeErased();

    // For the journal: without telling it.
    std::unique_ptr<dwg::Object> takeOut(dwg::Handle handle);
    void putBack(dwg::Object object);
    void markErased(dwg::Handle handle, bool isErased);

private:
    /// The layers that something is drawn on. Found out once for many erasures in a row.
    const std::unordered_set<dwg::Handle>& layersInUse() const;

    mutable std::optional<std::unordered_set<dwg::Handle>> usedLayers;
    std::unordered_map<dwg::Handle, std::unique_ptr<AcDbObject>> opened;
    std::unordered_set<dwg::Handle> erased;
    std::unordered_map<std::uint16_t, dwg::Handle> tables;
    dwg::Handle modelSpaceHandle = 0, paperSpaceHandle = 0;
};
