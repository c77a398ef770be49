// A library whose registration returns a failure, which AutoRegsvr32 ignores.
#include <ZvUtiLib/Export.h>

#include <fstream>

namespace {

void Log(const char* line) { std::ofstream("module.log", std::ios::app) << line << ' '; }

const struct Presence {
  Presence() { Log("loaded"); }
  ~Presence() { Log("released"); }
} presence;

}  // namespace

extern "C" __attribute__((visibility("default"))) long ZVUTILIB_CALLBACK DllRegisterServer() {
  Log("registered");
  return -1;
}
