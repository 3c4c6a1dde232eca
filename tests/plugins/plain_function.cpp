// A library whose entry is a function and not an alias of one.
extern "C" void initModule() {}
