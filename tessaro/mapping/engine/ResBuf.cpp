#include "tessaro/mapping/engine/ResBuf.h"

#include "editor/sdk/editor.h"

ResBuf::ResBuf(resbuf* list) : head(list), tail(list) {
    while (tail != nullptr && tail->rbnext != nullptr)
        tail = tail->rbnext;
}

ResBuf::~ResBuf() {
    acutRelRb(head);
}

resbuf& ResBuf::Append(int type) {
    resbuf* const element = acutNewRb(type);
    (head == nullptr ? head : tail->rbnext) = element;
    tail = element;
    return *element;
}

void ResBuf::AppendString(const std::wstring& text) {
    resbuf& element = Append(RTSTR);
    acutNewString(text.c_str(), element.resval.rstring);
}

void ResBuf::AppendReal(double value) {
    Append(RTREAL).resval.rreal = value;
}

void ResBuf::AppendShort(short value) {
    Append(RTSHORT).resval.rint = value;
}

void ResBuf::AppendNil() {
    Append(RTNIL);
}

bool ResBuf::AppendVariable(const wchar_t* name) {
    resbuf value;
    if (acedGetVar(name, &value) != RTNORM)
        return false;
    resbuf& element = Append(value.restype);
    element.resval = value.resval; // a string changes its owner
    return true;
}

void ResBuf::AppendEnd() {
    Append(RTNONE);
}

std::size_t ResBuf::Count() const {
    std::size_t count = 0;
    for (const resbuf* element = head; element != nullptr; element = element->rbnext)
        ++count;
    return count;
}

const resbuf& ResBuf::At(std::size_t index) const {
    const resbuf* element = head;
    for (std::size_t place = 0; element != nullptr && place < index; ++place)
        element = element->rbnext;
    if (element == nullptr)
        throw std::out_of_range("ResBuf: Index out of range.");
    return *element;
}
