// A plug-in for the loader's test.
extern "C" [[gnu::visibility("default")]] int testPluginAnswer();

extern "C" int testPluginAnswer() { return 42; }
