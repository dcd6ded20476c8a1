#pragma once

#include "tessaro/mapping/OrderedTextMap.h"

#include <string>

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

/// The schemes by name, owned. Main thread.
extern OrderedTextMap<MapScheme*> schemes;
/// Enters the scheme under that name and frees the one that had it.
void SetScheme(const std::wstring& name, MapScheme* scheme);
/// Frees all schemes.
void DeleteSchemes();
