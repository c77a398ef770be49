#include "platform/win32/LoadLibrary.h"

#include <dlfcn.h>

#include <string>

#include "platform/Doors.h"
#include "platform/Path.h"

HMODULE LoadLibraryA(const char* path) {
  std::string name = zvuti::WithNativeSeparators(path);
  if (name.empty()) return nullptr;  // the system would take it for the program itself
  if (name.find('/') == std::string::npos) {
    const std::string beside = zvuti::TheDoors().applicationFolder() + name;
    if (zvuti::IsRegularFile(beside.c_str())) name = beside;
  }
  return dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
}

FARPROC GetProcAddress(HMODULE library, const char* name) {
  return reinterpret_cast<FARPROC>(dlsym(library, name));
}

int FreeLibrary(HMODULE library) { return dlclose(library) == 0 ? 1 : 0; }
