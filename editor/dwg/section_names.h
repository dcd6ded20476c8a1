#pragma once

#include <string_view>

/// Sections by the names that the paged containers store. The records of a flat file (R13 to 2000) answer to the
/// same names.
namespace dwg::section {

inline constexpr std::string_view header = "AcDb:Header";
inline constexpr std::string_view auxHeader = "AcDb:AuxHeader";
inline constexpr std::string_view classes = "AcDb:Classes";
inline constexpr std::string_view handles = "AcDb:Handles";
inline constexpr std::string_view templateSection = "AcDb:Template";
inline constexpr std::string_view objectFreeSpace = "AcDb:ObjFreeSpace";
/// In a flat file the whole file, since its object map holds file offsets.
inline constexpr std::string_view objects = "AcDb:AcDbObjects";
inline constexpr std::string_view revisionHistory = "AcDb:RevHistory";
inline constexpr std::string_view summaryInfo = "AcDb:SummaryInfo";
inline constexpr std::string_view preview = "AcDb:Preview";
inline constexpr std::string_view appInfo = "AcDb:AppInfo";
inline constexpr std::string_view fileDependencyList = "AcDb:FileDepList";

/// From 2013 on: what objects keep outside of themselves, solids above all.
inline constexpr std::string_view binaryData = "AcDb:AcDsPrototype_1b";

} // namespace dwg::section
