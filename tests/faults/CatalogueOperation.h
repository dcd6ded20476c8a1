#pragma once

#include "tests/faults/FaultWalk.h"

class Directory;

namespace faults {

/// Module state as it is when the module is mapped, for the life of the object, with settings and caches in the
/// operation's folder.
class CatalogueOperation : public Operation {
public:
    CatalogueOperation();
    ~CatalogueOperation() override;

protected:
    /// Empties the catalogue, the schemes and the settings in memory.
    void Forget() const;
    /// A Directory of that path below the folder with three Blocks, their descriptions being the version, and three
    /// pictures in the version's colour.
    Directory* Add(const std::string& name, int version) const;
    /// Two Directories and a scheme.
    void Fill(int version) const;

    /// The version of all pictures of the Directory; -1 where there are not three, or of several versions.
    static int PicturesOf(const Directory& directory);
    /// The version of the catalogue in the main cache; -1 where it can't be read, or is of several versions.
    int CachedVersion() const;
};

} // namespace faults
