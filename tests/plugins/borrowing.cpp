// A library without an entry of its own that links one with an entry.
extern "C" int answerOfAnother() {
  return 42;
}
