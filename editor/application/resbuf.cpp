#include "editor/sdk/resbuf.h"

#include <cstdlib>
#include <cwchar>
#include <new>

// Elements and their strings come from the C run-time, so that a module may free what the editor made and back.

resbuf* acutNewRb(int type) {
    void* const memory = std::malloc(sizeof(resbuf));
    if (memory == nullptr)
        return nullptr;
    auto* const element = new (memory) resbuf;
    element->restype = static_cast<short>(type);
    return element;
}

int acutRelRb(resbuf* list) {
    while (list != nullptr) {
        resbuf* const next = list->rbnext;
        if (list->restype == RTSTR)
            std::free(list->resval.rstring);
        std::free(list);
        list = next;
    }
    return RTNORM;
}

int acutNewString(const wchar_t* text, wchar_t*& copy) {
    copy = nullptr;
    if (text == nullptr)
        return RTERROR;
    const std::size_t size = (std::wcslen(text) + 1) * sizeof(wchar_t);
    copy = static_cast<wchar_t*>(std::malloc(size));
    if (copy == nullptr)
        return RTERROR;
    std::wmemcpy(copy, text, size / sizeof(wchar_t));
    return RTNORM;
}
