#include "editor/database/current_time.h"

#include "editor/dwg/default_header.h"

#include <chrono>

namespace editor {

dwg::DayAndTime currentDayAndTime() {
    using namespace std::chrono;
    const std::int64_t moment = duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
    return dwg::dayAndTime(moment / 1000, static_cast<std::uint32_t>(moment % 1000));
}

} // namespace editor
