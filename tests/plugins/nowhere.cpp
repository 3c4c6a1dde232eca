// The library of the function that the incomplete plug-in needs.
extern "C" void nowhere() {}
