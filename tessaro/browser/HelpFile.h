#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Reads a compiled help file: a folder of pages in one file (mark "ITSF", version 3). Only pages that are stored as
/// they are can be read, which is how the guide is made; compressed ones are not. Any bytes may be given.

/// The page of that full name ("/index.html"), ignoring case; nothing where the bytes are no help file or hold no such
/// page.
std::optional<std::string> HelpPage(std::string_view file, std::string_view name);
