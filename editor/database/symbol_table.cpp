#include "editor/database/database_state.h"
#include "editor/database/names.h"

#include <algorithm>

using namespace dwg::object_type;

struct AcDbSymbolTableIterator::Impl {
    AcDbDatabase* database = nullptr;
    std::vector<dwg::Handle> records;
    /// From -1, before the first, to the number of records.
    std::ptrdiff_t place = 0;

    bool inside() const { return place >= 0 && place < static_cast<std::ptrdiff_t>(records.size()); }
    dwg::Handle here() const { return records[static_cast<std::size_t>(place)]; }
    void skip(std::ptrdiff_t direction, bool skipErased) {
        while (inside() && skipErased && database->impl()->isErased(here()))
            place += direction;
    }
};

AcDbSymbolTableIterator::AcDbSymbolTableIterator(std::unique_ptr<Impl> implementation)
    : state(std::move(implementation)) {}

AcDbSymbolTableIterator::~AcDbSymbolTableIterator() = default;

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipErased) {
    state->place = atBeginning ? 0 : static_cast<std::ptrdiff_t>(state->records.size()) - 1;
    state->skip(atBeginning ? 1 : -1, skipErased);
}

bool AcDbSymbolTableIterator::done() const {
    return !state->inside();
}

void AcDbSymbolTableIterator::step(bool forward, bool skipErased) {
    if (!state->inside())
        return;
    const std::ptrdiff_t direction = forward ? 1 : -1;
    state->place += direction;
    state->skip(direction, skipErased);
}

int AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode) const {
    record = nullptr;
    if (done())
        return Acad::eInvalidIndex;
    return state->database->impl()->openAs(record, state->here(), mode);
}

int AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done())
        return Acad::eInvalidIndex;
    id = {state->database, state->here()};
    return eOk;
}

int AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning, bool skipErased) const {
    iterator = nullptr;
    if (database() == nullptr)
        return Acad::eNoDatabase;
    auto walk = std::make_unique<AcDbSymbolTableIterator::Impl>();
    walk->database = database();
    walk->records = AcDbDatabase::Impl::records(*impl()->object);
    // A damaged table may name what isn't there.
    std::erase_if(walk->records,
                  [&](dwg::Handle record) { return database()->impl()->drawing.find(record) == nullptr; });
    iterator = new AcDbSymbolTableIterator(std::move(walk));
    iterator->start(atBeginning, skipErased);
    return eOk;
}

int AcDbSymbolTable::getAt(const wchar_t* name, AcDbObjectId& id) const {
    id = {};
    if (database() == nullptr)
        return Acad::eNoDatabase;
    if (name == nullptr)
        return Acad::eInvalidInput;
    const dwg::Handle found = database()->impl()->findRecord(impl()->object->type, name);
    if (found == 0)
        return Acad::eKeyNotFound;
    id = {database(), found};
    return eOk;
}

int AcDbSymbolTable::getAt(const wchar_t* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode) const {
    record = nullptr;
    AcDbObjectId id;
    const int status = getAt(name, id);
    return status != eOk ? status : database()->impl()->openAs(record, id.handle, mode);
}

bool AcDbSymbolTable::has(const wchar_t* name) const {
    AcDbObjectId id;
    return getAt(name, id) == eOk;
}

int AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    id = {};
    if (database() == nullptr)
        return Acad::eNoDatabase;
    if (!impl()->writing)
        return Acad::eNotOpenForWrite;
    if (record == nullptr || record->database() != nullptr)
        return Acad::eInvalidInput;
    dwg::Object& fresh = *record->impl()->object;
    // The type of a record is that of its table and one more.
    if (fresh.type != impl()->object->type + 1)
        return Acad::eInvalidInput;
    const std::wstring& name = editor::recordHead(fresh)->name;
    if (!editor::isValidRecordName(name))
        return Acad::eInvalidInput;
    if (has(name.c_str()))
        return Acad::eDuplicateRecordName;
    AcDbDatabase::Impl& target = *database()->impl();
    dwg::Object& added = target.take(record);
    added.owner = {dwg::handle_code::softPointer, impl()->object->handle};
    target.enter(*impl()->object, added.handle);
    target.complete(added);
    id = target.id(added.handle);
    return eOk;
}

int AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}
