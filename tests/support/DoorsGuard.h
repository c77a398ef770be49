// DoorsGuard: saves the table of doors and restores it when a test ends.
#pragma once

#include "platform/Doors.h"

namespace test {

class DoorsGuard {
 public:
  DoorsGuard() : saved_(zvuti::TheDoors()) {}
  ~DoorsGuard() { zvuti::TheDoors() = saved_; }
  DoorsGuard(const DoorsGuard&) = delete;
  DoorsGuard& operator=(const DoorsGuard&) = delete;

  zvuti::Doors* operator->() { return &zvuti::TheDoors(); }

 private:
  zvuti::Doors saved_;
};

}  // namespace test
