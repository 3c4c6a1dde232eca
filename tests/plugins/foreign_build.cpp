// A library in which the name of the build is that of a function, or of an object of each thread.
extern "C" {
#ifdef BUILD_OF_THREADS
thread_local char libvarrowPlugInBuild[256];
#else
void libvarrowPlugInBuild() {}
#endif
}
