// Keeps drivers and plug-ins loaded to the end of a sanitized test program, so that the leak checker can name them and
// tests/lsan.supp can tell what they keep from leaks of our own.
#ifdef __has_feature // clang
#define SORVANE_IS_SANITIZED __has_feature(address_sanitizer)
#elif defined __SANITIZE_ADDRESS__
#define SORVANE_IS_SANITIZED 1
#else
#define SORVANE_IS_SANITIZED 0
#endif

#if SORVANE_IS_SANITIZED
extern "C" int dlclose(void* /*handle*/) {
    return 0;
}
#endif
