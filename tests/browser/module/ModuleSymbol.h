#pragma once

#include <string>

namespace tests {

/// Where a symbol that a loaded module keeps to itself lies, by its mangled name; null where its file has no such one.
/// `inside` is any address of the module.
void* moduleSymbol(const void* inside, const std::string& name);

} // namespace tests
