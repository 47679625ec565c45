// The font library keeps a cache for the life of the process, which LeakSanitizer takes for a leak.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
