// Initialises COM for all threads of the program, as a host does before it reads XML.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <objbase.h>

namespace {

const struct Com {
  Com() { CoInitialize(nullptr); }
  ~Com() { CoUninitialize(); }
} com;

}  // namespace
