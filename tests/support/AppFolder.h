// AppFolder: a temporary folder that the library uses as the program's folder.
#pragma once

#include <string>

#include "tests/support/DoorsGuard.h"
#include "tests/support/TempFolder.h"

namespace test {

class AppFolder : public TempFolder {
 public:
  AppFolder() {
    current = Path() + "/";
    doors_->applicationFolder = [] { return current; };
  }

 private:
  static inline std::string current;
  DoorsGuard doors_;
};

}  // namespace test
