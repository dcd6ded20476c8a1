#include "editor/dwg/result.h"

namespace dwg {

const char* kindName(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::io:
        return "io";
    case ErrorKind::notADrawing:
        return "not a drawing";
    case ErrorKind::unsupported:
        return "unsupported";
    case ErrorKind::truncated:
        return "truncated";
    case ErrorKind::damaged:
        return "damaged";
    case ErrorKind::tooLarge:
        return "too large";
    case ErrorKind::missing:
        return "missing";
    case ErrorKind::invalid:
        return "invalid";
    }
    return "unknown";
}

} // namespace dwg
