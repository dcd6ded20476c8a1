#include "tessaro/mapping/engine/Engine.h"

bool MapAndInsertDrawing(const std::wstring&, const std::wstring&, const std::wstring&) {
    return false;
}

void ApplyBlockNameScheme(const std::wstring&, const std::wstring&) {}

void RestoreCurrentLayer() {}
