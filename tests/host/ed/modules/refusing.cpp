// A module that answers its first message with an error.
extern "C" unsigned acrxGetApiVersion() { return 1; }
extern "C" int acrxEntryPoint(int, void*) { return 3; }
