// The key operations whose instructions are counted.
#pragma once

#include <cstddef>
#include <functional>
#include <span>

/// Only instructions while this is on the stack are counted.
extern "C" [[gnu::noipa]] void Counted(const std::function<void()>& operation);

namespace counts {

struct Operation {
  const char* name;
  bool (*run)(std::size_t size);  ///< whether the result is right
};

/// None where the build has no Expat.
extern const std::span<const Operation> kXmlOperations;

}  // namespace counts
