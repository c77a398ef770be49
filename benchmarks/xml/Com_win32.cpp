// Windows reads XML with COM objects, for which the host initialises COM.
#include <objbase.h>

namespace {

const struct Com {
  Com() { CoInitialize(nullptr); }
  ~Com() { CoUninitialize(); }
} com;

}  // namespace
