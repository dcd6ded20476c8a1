#include "editor/database/database_state.h"
#include "editor/database/names.h"

#include <algorithm>

using namespace dwg::object_type;

struct AcDbBlockTableRecordIterator::Impl {
    AcDbDatabase* database = nullptr;
    std::vector<dwg::Handle> entities;
    /// From -1, before the first, to the number of entities.
    std::ptrdiff_t place = 0;

    bool inside() const { return place >= 0 && place < static_cast<std::ptrdiff_t>(entities.size()); }
    dwg::Handle here() const { return entities[static_cast<std::size_t>(place)]; }
    void skip(std::ptrdiff_t direction) {
        while (inside() && database->impl()->isErased(here()))
            place += direction;
    }
};

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(std::unique_ptr<Impl> implementation)
    : state(std::move(implementation)) {}

AcDbBlockTableRecordIterator::~AcDbBlockTableRecordIterator() = default;

bool AcDbBlockTableRecordIterator::done() const {
    return !state->inside();
}

void AcDbBlockTableRecordIterator::step(bool forward, bool skipErased) {
    if (!state->inside())
        return;
    const std::ptrdiff_t direction = forward ? 1 : -1;
    state->place += direction;
    if (skipErased)
        state->skip(direction);
}

int AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode) const {
    entity = nullptr;
    if (done())
        return Acad::eInvalidIndex;
    return state->database->impl()->openAs(entity, state->here(), mode);
}

AcDbBlockTableRecord::AcDbBlockTableRecord()
    : AcDbSymbolTableRecord(Impl::fresh(desc(), blockHeader, dwg::BlockHeader{})) {}

bool AcDbBlockTableRecord::isLayout() const {
    const auto* const block = impl()->body<dwg::BlockHeader>();
    if (block == nullptr)
        return false;
    // The two spaces of drawings from before layouts name none.
    const bool isSpace = database() != nullptr && (database()->impl()->modelSpace() == impl()->object->handle ||
                                                   database()->impl()->paperSpace() == impl()->object->handle);
    return isSpace || !block->layout.isNull();
}

bool AcDbBlockTableRecord::isAnonymous() const {
    const auto* const block = impl()->body<dwg::BlockHeader>();
    return block != nullptr && block->anonymous;
}

bool AcDbBlockTableRecord::isFromExternalReference() const {
    const auto* const block = impl()->body<dwg::BlockHeader>();
    return block != nullptr && block->isExternalReference;
}

bool AcDbBlockTableRecord::isFromOverlayReference() const {
    const auto* const block = impl()->body<dwg::BlockHeader>();
    return block != nullptr && block->isOverlay;
}

std::wstring AcDbBlockTableRecord::comments() const {
    const auto* const block = impl()->body<dwg::BlockHeader>();
    return block == nullptr ? std::wstring() : block->description;
}

int AcDbBlockTableRecord::setComments(const wchar_t* text) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    auto* const block = impl()->body<dwg::BlockHeader>();
    if (block == nullptr || text == nullptr)
        return Acad::eInvalidInput;
    block->description = text;
    impl()->object->changed();
    return eOk;
}

AcGePoint3d AcDbBlockTableRecord::origin() const {
    const auto* const block = impl()->body<dwg::BlockHeader>();
    return block == nullptr ? AcGePoint3d{} : editor::toPoint(block->basePoint);
}

int AcDbBlockTableRecord::setOrigin(const AcGePoint3d& point) {
    if (!impl()->writable())
        return Acad::eNotOpenForWrite;
    auto* const block = impl()->body<dwg::BlockHeader>();
    if (block == nullptr)
        return Acad::eNotApplicable;
    block->basePoint = editor::fromPoint(point);
    impl()->object->changed();
    return eOk;
}

int AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator) const {
    iterator = nullptr;
    if (database() == nullptr)
        return Acad::eNoDatabase;
    const auto* const block = impl()->body<dwg::BlockHeader>();
    if (block == nullptr)
        return Acad::eNotApplicable;
    auto walk = std::make_unique<AcDbBlockTableRecordIterator::Impl>();
    walk->database = database();
    walk->entities = block->entities;
    std::erase_if(walk->entities, [&](dwg::Handle handle) {
        const dwg::Object* const object = database()->impl()->drawing.find(handle);
        return object == nullptr || !object->isEntity();
    });
    walk->skip(1);
    database()->impl()->expectOpened(walk->entities.size());
    iterator = new AcDbBlockTableRecordIterator(std::move(walk));
    return eOk;
}

int AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    id = {};
    if (database() == nullptr)
        return Acad::eNoDatabase;
    if (!impl()->writing)
        return Acad::eNotOpenForWrite;
    auto* const block = impl()->body<dwg::BlockHeader>();
    if (block == nullptr || entity == nullptr || entity->database() != nullptr)
        return Acad::eInvalidInput;
    AcDbDatabase::Impl& target = *database()->impl();
    dwg::Object& object = *entity->impl()->object;
    if (const auto* const insert = object.as<dwg::Insert>()) {
        const dwg::Object* const definition = target.live(insert->block.value);
        if (definition == nullptr || definition->as<dwg::BlockHeader>() == nullptr)
            return Acad::eInvalidKey;
        if (target.draws(insert->block.value, impl()->object->handle))
            return Acad::eSelfReference;
    }
    dwg::Object& added = target.take(entity);
    target.drawing.setOwner(added, impl()->object->handle);
    target.complete(added);
    block->entities.push_back(added.handle);
    impl()->object->changed();
    id = target.id(added.handle);
    return eOk;
}

int AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}
