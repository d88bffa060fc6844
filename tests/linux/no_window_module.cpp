// A library that could be loaded as a module and is none.

extern "C" int quillmarTestLibrary() {
  return 0;
}
