// What the leak check of instrumented builds must not count: the font library keeps its caches until
// the process ends.
#ifdef __SANITIZE_ADDRESS__
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig.so\n"; }
extern "C" const char* __lsan_default_options() { return "print_suppressions=0"; }
#endif
