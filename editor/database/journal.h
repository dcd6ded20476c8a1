#pragma once

#include "editor/database/database_state.h"

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace editor {

/// What a database remembers of its changes: of everything that is touched in a group, how it was before. Taking a
/// group back exchanges what it remembers for what is there, so that it then remembers how to carry it out again.
class Journal {
public:
    explicit Journal(AcDbDatabase::Impl& of) : database(of) {}

    /// To be called before an object is changed, made or removed.
    void touch(dwg::Handle object);
    /// Before an object is marked as erased, or no more.
    void touchErasure(dwg::Handle object);
    /// Before a variable of the drawing is changed.
    void touchHeader();
    /// Before a class is added to the drawing.
    void touchClasses();

    void begin(std::wstring name);
    bool end();
    /// Ends the open group as a part of the one before it, so that it isn't taken back by itself.
    void joinToLast();
    void join(std::size_t from, std::wstring name);
    std::size_t depth() const { return done.size(); }
    std::optional<std::wstring> undo();
    std::optional<std::wstring> redo();

private:
    struct Image {
        std::unique_ptr<dwg::Object> object; ///< null where there was none
        /// So many entities at the beginning of a block record's list are those of the object in the drawing, and not
        /// kept in the image.
        std::size_t sharedEntities = 0;
    };
    struct Group {
        std::wstring name;
        std::map<dwg::Handle, Image> objects;
        std::map<dwg::Handle, bool> erasures;
        std::unique_ptr<dwg::HeaderVariables> header;
        std::unique_ptr<std::vector<dwg::ObjectClass>> classes;
        bool empty() const { return objects.empty() && erasures.empty() && !header && !classes; }
    };

    Group& open();
    void settle(Group& group) const;
    void exchange(Group& group);
    void exchange(dwg::Handle handle, Image& image);
    void expand(dwg::Handle handle, Image& image) const;
    static void merge(Group& into, Group&& later);

    AcDbDatabase::Impl& database;
    std::optional<Group> current;
    bool reopened = false; ///< the open group is the last one, for changes while none was open
    std::deque<Group> done;
    std::vector<Group> undone;
};

} // namespace editor
