#include "editor/database/left_out.h"

#include "editor/database/database_state.h"
#include "editor/dwg/code_page.h"

namespace editor {

std::vector<std::wstring> leftOutMessages(const AcDbDatabase& database) {
    std::vector<std::wstring> lines;
    for (const dwg::LeftOut& left : database.impl()->leftOut) {
        const std::size_t count = left.handles.size();
        const std::wstring type = dwg::CodePage().decode(left.type);
        lines.push_back(std::to_wstring(count) + (count == 1 ? L" object of type " : L" objects of type ") + type +
                        (count == 1 ? L" was left out." : L" were left out."));
    }
    return lines;
}

} // namespace editor
