// Whether an object is of the very class that it is known by, or of one derived from it.
#pragma once

#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

namespace zvuti::wire {

/// The object that lies where `object` was made; hosts put derived ones there.
template <class T>
T& Present(T& object) {
  return *std::launder(std::addressof(object));
}

/// True when `object` is a T and no more. It compares the pointers to the tables of virtual operations,
/// which stand in front of an object: typeid would crash on classes of a host that is compiled without
/// type information. Where the program has T's table twice, an object can be taken for a derived one.
template <class T>
bool IsExactly(const T& object) {
  static_assert(std::is_polymorphic_v<T>);
  static const T plain;
  return std::memcmp(static_cast<const void*>(&Present(object)), static_cast<const void*>(&plain),
                     sizeof(void*)) == 0;
}

}  // namespace zvuti::wire
