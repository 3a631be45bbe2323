// A module built for another version of the host.
extern "C" unsigned acrxGetApiVersion() { return 0; }
extern "C" int acrxEntryPoint(int, void*) { return 0; }
