// The good plug-in, but built against another version of the library, with an ABI in another
// colour.
#include "libvarrow/utility/PlugInBuild.h"
#undef LIBVARROW_VERSION_NUMBER
#define LIBVARROW_VERSION_NUMBER LIBVARROW_VERSION_OF(2, 20, 3)
#undef LIBVARROW_ABI
#define LIBVARROW_ABI "\x1b[31m\n"
#include "good.cpp"
