// A host program has to initialise COM on each thread that reads XML.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <objbase.h>

namespace {

const struct Com {
  Com() { CoInitialize(nullptr); }
  ~Com() { CoUninitialize(); }
} com;

}  // namespace
