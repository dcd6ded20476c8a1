#pragma once

#include "editor/sdk/resbuf.h"

#include <stdexcept>
#include <string>

/// A list of values for the host, built element by element and freed with the object. Main thread.
class ResBuf {
public:
    ResBuf() = default;
    /// Takes over a list that the host gave; null is an empty one.
    explicit ResBuf(resbuf* list);
    ~ResBuf();
    ResBuf(const ResBuf&) = delete;
    ResBuf& operator=(const ResBuf&) = delete;

    void AppendString(const std::wstring& text);
    void AppendReal(double value);
    void AppendShort(short value);
    void AppendNil();
    /// The value of a system variable as the host gives it; one that it does not know appends nothing and gives false.
    bool AppendVariable(const wchar_t* name);
    /// The element that ends a list of command elements.
    void AppendEnd();

    const resbuf* Head() const { return head; }
    std::size_t Count() const;
    /// Throws std::out_of_range with "ResBuf: Index out of range." for an element that is not there.
    const resbuf& At(std::size_t index) const;
    bool IsType(std::size_t index, int type) const { return At(index).restype == type; }

private:
    resbuf& Append(int type);

    resbuf* head = nullptr;
    resbuf* tail = nullptr;
};
