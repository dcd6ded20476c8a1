#pragma once

#include <cstdint>
#include <span>

namespace platform {

/// Raw data that a loaded module carries under a number, for itself and for others: a note of the owner "RCDATA" whose
/// type is the number. The bytes live as long as the module. Null stands for the process's executable. Empty where
/// there is none.
std::span<const std::uint8_t> FindResource(void* module, std::uint32_t number);

/// The same among the notes of one segment. A note that claims more than there is ends the search.
std::span<const std::uint8_t> FindResourceNote(std::span<const std::uint8_t> notes, std::uint32_t number);

} // namespace platform
