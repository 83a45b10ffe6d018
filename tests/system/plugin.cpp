// A plug-in for the loader's tests. With TEST_PLUGIN_UNBOUND, it calls a function that no library has.
extern "C" [[gnu::visibility("default")]] int testPluginAnswer();

#ifdef TEST_PLUGIN_UNBOUND
extern "C" int testPluginUndefined();

extern "C" int testPluginAnswer() { return testPluginUndefined(); }
#else
#ifdef __ELF__
// A symbol at address 0: an absolute one, which the linker leaves where it is.
__asm__(".globl testPluginAddressZero\n.set testPluginAddressZero, 0");
#endif

extern "C" int testPluginAnswer() { return 42; }
#endif
