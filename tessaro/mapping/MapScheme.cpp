#include "tessaro/mapping/MapScheme.h"

OrderedTextMap<MapScheme*> schemes;

void SetScheme(const std::wstring& name, MapScheme* scheme) {
    MapScheme** const old = schemes.Lookup(name);
    if (old != nullptr && *old != scheme)
        delete *old;
    schemes.SetAt(name, scheme);
}

void DeleteSchemes() {
    for (const auto& [name, scheme] : schemes)
        delete scheme;
    schemes.clear();
}
