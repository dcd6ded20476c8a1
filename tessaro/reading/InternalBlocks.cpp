#include "tessaro/reading/InternalBlocks.h"

#include "editor/sdk/documents.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/reading/HopBudget.h"

namespace {

constexpr std::int32_t kInternalFileType = 16;

std::unique_ptr<Block> MakeBlock(const AcDbBlockTableRecord& record) {
    std::wstring name;
    if (record.getName(name) != eOk)
        return nullptr;
    if (record.isLayout() || record.isAnonymous() || record.isFromExternalReference() ||
        record.isFromOverlayReference() || name.find(L'|') != std::wstring::npos)
        return nullptr;
    auto block = std::make_unique<Block>();
    block->name = name;
    block->description = record.comments();
    block->fileType = kInternalFileType;
    return block;
}

/// The block table of the current document, locked from Open to Close. Main thread.
class BlockTableReader {
public:
    bool Open() {
        AcApDocManager* const manager = acDocManagerPtr();
        document = manager != nullptr ? manager->curDocument() : nullptr;
        if (document == nullptr)
            return false;
        manager->lockDocument(document);
        AcDbBlockTable* opened = nullptr;
        if (document->database()->getBlockTable(opened) != eOk)
            return false;
        table = opened;
        AcDbSymbolTableIterator* made = nullptr;
        if (table->newIterator(made, true, false) != eOk)
            return false;
        iterator.reset(made);
        return true;
    }

    /// False where no record is left.
    bool ReadSome(NewBlocks& blocks) {
        const HopBudget budget;
        for (; !iterator->done(); iterator->step(true, false)) {
            if (budget.Spent())
                return true;
            AcDbSymbolTableRecord* record = nullptr;
            if (iterator->getRecord(record, AcDb::kForRead) != eOk || record == nullptr)
                continue;
            if (const auto* definition = dynamic_cast<AcDbBlockTableRecord*>(record))
                if (auto block = MakeBlock(*definition))
                    blocks.push_back(std::move(block));
            record->close();
        }
        return false;
    }

    void Close() {
        iterator.reset();
        if (table != nullptr)
            table->close();
        if (document != nullptr)
            acDocManagerPtr()->unlockDocument(document);
    }

private:
    AcApDocument* document = nullptr;
    AcDbBlockTable* table = nullptr;
    std::unique_ptr<AcDbSymbolTableIterator> iterator;
};

} // namespace

void ReadInternalBlocks(NewBlocks& blocks) {
    BlockTableReader reader;
    bool more = false;
    platform::CallOnMainThread([&] { more = reader.Open(); });
    while (more)
        platform::CallOnMainThread([&] { more = reader.ReadSome(blocks); });
    platform::CallOnMainThread([&] { reader.Close(); });
}
