#pragma once

#include <cstddef>
#include <cstdint>

/// What crosses between the module and a companion that it finds by name: plain records and functions with the calling
/// convention of C. No exception crosses; a method that fails says so by its result and its failure text. Both sides
/// come from one compiler, so that wchar_t means the same.
extern "C" {

/// A date and time of day without a zone. The default is the first day of the first year.
struct HelperDate {
    std::int32_t year, month, day, hour, minute, second;
};

/// Receives numbers. `append` does not throw.
struct HelperList {
    void* owner;
    void (*append)(void* owner, double value);
};

/// Receives a text. `assign` does not throw; a text that was never assigned stays null.
struct HelperText {
    void* owner;
    void (*assign)(void* owner, const wchar_t* text, std::size_t length);
};

enum HelperResult : std::int32_t {
    kHelperRaised = -1, ///< the failure text says why
    kHelperFalse = 0,
    kHelperTrue = 1,
};

/// TessaroHelper.Services.LoadDrawing: reads the drawing at `path` without opening it in the editor. Any thread. With
/// `wantInsPts` records of 18 numbers are appended to `data`: insertion point (x, y, z), lower left and upper right
/// corner of the view as fractions of the picture (x, y each), target and direction of the view (x, y, z each), width,
/// height, twist in radians, and centre (x, y). `width` and `height` are the picture's in pixels. `first` and `second`
/// get the dates of creation and of last change as local time, in this order; they may be one variable.
typedef HelperResult (*HelperLoadDrawing)(void* object, const wchar_t* path, std::int32_t wantInsPts,
                                          std::int32_t width, std::int32_t height, const HelperList* data,
                                          HelperDate* first, HelperDate* second, const HelperText* description,
                                          const HelperText* failure);

/// A companion exports one factory for each of its types, named after the type with "_" for the point, which gives an
/// object or null; and one look-up of the type's methods by name, which gives a function or null.
typedef void* (*HelperFactory)();
typedef void (*HelperMethod)();
typedef HelperMethod (*HelperFindMethod)(const char* typeName, const char* methodName);

} // extern "C"

constexpr const char* kHelperServicesType = "TessaroHelper.Services";
constexpr const char* kHelperServicesFactory = "TessaroHelper_Services";
constexpr const char* kHelperFindMethod = "TessaroHelper_FindMethod";
