// A library that needs a function that nothing has, though loading it does not call the function.
extern "C" void nowhere();
extern "C" void callNowhere() {
  nowhere();
}
