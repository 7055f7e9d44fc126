// A shared library that is no strategy module.

extern "C" __attribute__((visibility("default"))) int SomethingElse();

extern "C" int SomethingElse() {
  return 1;
}
