#pragma once

namespace tests {

/// True in builds with a sanitizer, which takes memory of its own, keeps what was freed and refuses none.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif
#else
constexpr bool isSanitized = false;
#endif

} // namespace tests
