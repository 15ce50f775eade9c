/// Asked by LeakSanitizer: functions on the way to allocations whose loss is no fault of the library's.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return
        // The C library loses the path on which it looks for the locale of a std::locale.
        "leak:argz_add_sep\n"
        // LeakSanitizer knows what the dynamic linker keeps by its calls of malloc, which come from elsewhere
        // in a program that has a malloc of its own.
        "leak:/ld-linux\n"
        "leak:_dl_map_object_deps\n";
}
