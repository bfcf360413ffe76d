// Tells whether the program is built with the address sanitizer.
#pragma once

#ifdef __has_feature // clang
#define SORVANE_IS_SANITIZED __has_feature(address_sanitizer)
#elif defined __SANITIZE_ADDRESS__
#define SORVANE_IS_SANITIZED 1
#else
#define SORVANE_IS_SANITIZED 0
#endif
