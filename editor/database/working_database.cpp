#include "editor/database/working_database.h"

#include "editor/sdk/db.h"

#include <atomic>

namespace editor {

namespace {

std::atomic<AcDbDatabase*> currentDatabase{nullptr};

class HostServices final : public AcDbHostApplicationServices {
public:
    AcDbDatabase* workingDatabase() const override { return currentDatabase.load(); }
};

} // namespace

void setWorkingDatabase(AcDbDatabase* database) {
    currentDatabase.store(database);
}

void forgetWorkingDatabase(const AcDbDatabase* database) {
    AcDbDatabase* expected = const_cast<AcDbDatabase*>(database);
    currentDatabase.compare_exchange_strong(expected, nullptr);
}

} // namespace editor

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static editor::HostServices services;
    return &services;
}
