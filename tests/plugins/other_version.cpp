// The good plug-in, but built against another version of the library.
#include "libvarrow/version.h"
#undef LIBVARROW_VERSION_NUMBER
#define LIBVARROW_VERSION_NUMBER LIBVARROW_VERSION_OF(2, 20, 3)
#include "good.cpp"
