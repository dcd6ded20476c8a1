#include "editor/dwg/handle.h"

namespace dwg {

HandleRef resolved(HandleRef stored, Handle own) {
    switch (stored.code) {
    case handle_code::next:
        return {stored.code, own + 1};
    case handle_code::previous:
        return {stored.code, own == 0 ? 0 : own - 1};
    case handle_code::plusOffset:
        return {stored.code, own + stored.value < own ? 0 : own + stored.value};
    case handle_code::minusOffset:
        return {stored.code, stored.value > own ? 0 : own - stored.value};
    default:
        return stored;
    }
}

HandleRef stored(HandleRef absolute, Handle own) {
    const Handle value = absolute.value;
    switch (absolute.code) {
    case handle_code::next:
        if (value == own + 1)
            return {absolute.code, 0};
        break;
    case handle_code::previous:
        if (own != 0 && value == own - 1)
            return {absolute.code, 0};
        break;
    case handle_code::plusOffset:
        if (value != 0 && value >= own)
            return {absolute.code, value - own};
        break;
    case handle_code::minusOffset:
        if (value != 0 && value <= own)
            return {absolute.code, own - value};
        break;
    default:
        return absolute;
    }
    return {handle_code::softPointer, value};
}

} // namespace dwg
