#pragma once

class AcDbDatabase;

namespace editor {

/// Makes a database (null: none) what acdbHostApplicationServices()->workingDatabase() gives. The database isn't owned;
/// one that is destroyed while it is the working database leaves none. Any thread.
void setWorkingDatabase(AcDbDatabase* database);

/// Takes the database away where it is the working one. Called by its destructor.
void forgetWorkingDatabase(const AcDbDatabase* database);

} // namespace editor
