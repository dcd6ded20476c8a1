#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// A map from text to T that iterates in order of insertion; look-up is exact, with case.
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
        places.emplace(key, entries.size());
        entries.emplace_back(key, std::move(value));
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
    std::map<std::wstring, std::size_t> places;
};

/// How the layers, linetypes and colours of a library drawing land on the user's layers.
struct MapScheme {
    int unknownMode = 0;       ///< 0 ignore, 1 ask for a new map, 2 default to unknownValue
    std::wstring unknownValue; ///< the layer for mode 2, or the variable that gives it
    bool unknownIsVariable = false;
    bool defaultToByLayer = true;      ///< a moved entity also gets colour and linetype BYLAYER
    int schemeType = 0;                ///< 0 layer, 1 linetype, 2 colour, 3 block name
    OrderedTextMap<std::wstring> maps; ///< From pattern in upper case, To text
    OrderedTextMap<int> variableMaps;  ///< From keys whose To text names a variable, with the value 1
};

/// The schemes by name, owned. Main thread, or the close finisher while no worker runs.
extern OrderedTextMap<MapScheme*> schemes;
