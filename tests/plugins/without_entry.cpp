// A library without an entry of its own. Built once more, it links one with an entry.
extern "C" int answer() {
  return 42;
}
