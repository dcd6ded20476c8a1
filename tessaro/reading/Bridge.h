#pragma once

#include "tessaro/reading/Examine.h"

#include "tessaro/platform/SharedLibrary.h"

#include <atomic>
#include <cstdint>
#include <vector>

/// The crossing into the helper, a shared object beside the module that is found by its name at the first use.

/// 0 until the helper's object was made; then what keeps it for the life of the process.
extern std::atomic<std::intptr_t> servicesptr;

/// Loads what a name as "TessaroHelper, Version=1.0" asks for: the part before the comma with ".dll" in LocalPath. Any
/// name is served alike. Throws std::runtime_error where it can't be loaded.
platform::SharedLibrary ResolveHandler(const std::wstring& name);

/// The part of LoadDrawing that knows the helper's type.
bool LoadDrawing2(const std::wstring& path, Block& block, bool wantInsPts, const PreviewBytes* preview,
                  MarkPoints& points);

/// Count of numbers in one record of the helper.
constexpr std::size_t kHelperRecordSize = 18;

/// One round of the projection: the position of the record's insertion point in a preview of that size is appended,
/// unless it lies outside of the record's view. A position that is no number counts as inside. Reads the first record,
/// whichever round it is; throws std::out_of_range where there are fewer numbers than a record has.
void ProjectInsertionPoint(const std::vector<double>& data, int width, int height, MarkPoints& points);
