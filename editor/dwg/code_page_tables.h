#pragma once

/// The characters of the bytes 0x80 to 0xFF. A byte without a character stands for itself (0x80 to 0x9F) or for a
/// private one (U+F700 plus the byte), so that every byte survives.
namespace dwg::code_page_tables {

extern const char16_t windows874[128];
extern const char16_t windows1250[128];
extern const char16_t windows1251[128];
extern const char16_t windows1252[128];
extern const char16_t windows1253[128];
extern const char16_t windows1254[128];
extern const char16_t windows1255[128];
extern const char16_t windows1256[128];
extern const char16_t windows1257[128];
extern const char16_t windows1258[128];

} // namespace dwg::code_page_tables
