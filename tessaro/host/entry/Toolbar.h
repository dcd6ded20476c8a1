#pragma once

#include "tessaro/host/entry/Exports.h"

/// Takes the button out of the toolbar again. Nothing calls it in this version: buttons stay when the host quits.
void RemoveToolbar();
