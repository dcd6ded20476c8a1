#include "tessaro/mapping/engine/LispText.h"

#include "tessaro/mapping/engine/ResBuf.h"

#include "editor/sdk/editor.h"

std::optional<std::wstring> TextOfSymbol(const std::wstring& symbol) {
    resbuf* value = nullptr;
    const int result = acedGetSym(symbol.c_str(), &value);
    const ResBuf list(value);
    if (result != RTNORM || list.Count() == 0 || !list.IsType(0, RTSTR) || list.At(0).resval.rstring == nullptr)
        return std::nullopt;
    return list.At(0).resval.rstring;
}
