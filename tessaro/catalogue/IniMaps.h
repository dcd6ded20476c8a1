#pragma once

#include "tessaro/mapping/OrderedTextMap.h"

#include <string>

/// A section: values by key. Iteration follows the order in which the keys were first set.
class CStringToStringMap {
public:
    virtual ~CStringToStringMap() = default;

    /// A key that is there keeps its place.
    void SetAt(const std::wstring& key, const std::wstring& value) { values.SetAt(key, value); }
    /// Null where there is no such key.
    const std::wstring* Lookup(const std::wstring& key) const { return values.Lookup(key); }
    std::size_t GetCount() const { return values.size(); }
    void RemoveAll() { values.clear(); }
    auto begin() const { return values.begin(); }
    auto end() const { return values.end(); }

private:
    OrderedTextMap<std::wstring> values;
};

/// An image: sections by name, in the order in which they were first set. Does not own them.
class CStringToObMap {
public:
    virtual ~CStringToObMap() = default;

    /// A name that is there keeps its place; what it stood for is the caller's.
    void SetAt(const std::wstring& key, CStringToStringMap* section) { sections.SetAt(key, section); }
    /// Null where there is no such section.
    CStringToStringMap* Lookup(const std::wstring& key) const {
        CStringToStringMap* const* const found = sections.Lookup(key);
        return found == nullptr ? nullptr : *found;
    }
    std::size_t GetCount() const { return sections.size(); }
    void RemoveAll() { sections.clear(); }
    auto begin() const { return sections.begin(); }
    auto end() const { return sections.end(); }

private:
    OrderedTextMap<CStringToStringMap*> sections;
};
