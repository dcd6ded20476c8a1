#pragma once

#include "companions/TessaroHelper/HelperInterface.h"

/// A helper under the helper's name whose answer the test gives; without one it answers false.
using FakeAnswer = HelperLoadDrawing;
constexpr const char* kFakeHelperSetAnswer = "FakeHelper_SetAnswer";
