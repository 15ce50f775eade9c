#pragma once

/// Defines NEREO_SANITIZER in a program that is built with AddressSanitizer or ThreadSanitizer, and
/// NEREO_ADDRESS_SANITIZER in one with the former. GCC tells of them by macros, Clang by features.

#if defined(__SANITIZE_ADDRESS__)
#define NEREO_ADDRESS_SANITIZER
#elif defined(__SANITIZE_THREAD__)
#define NEREO_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NEREO_ADDRESS_SANITIZER
#elif __has_feature(thread_sanitizer)
#define NEREO_SANITIZER
#endif
#endif

#ifdef NEREO_ADDRESS_SANITIZER
#define NEREO_SANITIZER
#endif
