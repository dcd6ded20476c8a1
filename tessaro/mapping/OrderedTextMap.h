#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// A map from text to T that iterates in order of insertion; look-up is exact, with case, by hash.
template <class T> class OrderedTextMap {
public:
    T* Lookup(const std::wstring& key) {
        const auto found = places.find(key);
        return found == places.end() ? nullptr : &entries[found->second].second;
    }
    const T* Lookup(const std::wstring& key) const { return const_cast<OrderedTextMap*>(this)->Lookup(key); }
    /// Replaces the value of a key that is there, in its place.
    void SetAt(const std::wstring& key, T value) {
        if (T* present = Lookup(key)) {
            *present = std::move(value);
            return;
        }
        entries.emplace_back(key, std::move(value));
        try {
            places.emplace(key, entries.size() - 1);
        } catch (...) {
            entries.pop_back(); // both or neither
            throw;
        }
    }
    bool RemoveKey(const std::wstring& key) {
        const auto found = places.find(key);
        if (found == places.end())
            return false;
        const std::size_t place = found->second;
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(place));
        places.erase(found);
        for (auto& [name, index] : places)
            if (index > place)
                --index;
        return true;
    }
    std::size_t size() const { return entries.size(); }
    bool empty() const { return entries.empty(); }
    auto begin() const { return entries.begin(); }
    auto end() const { return entries.end(); }
    void clear() {
        entries.clear();
        places.clear();
    }

private:
    std::vector<std::pair<std::wstring, T>> entries;
    std::unordered_map<std::wstring, std::size_t> places;
};
