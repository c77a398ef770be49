// Tells an object of a class from an object of a derived class.
#pragma once

#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

namespace zvuti::wire {

/// Returns the object now at the address of `object`; hosts may construct a derived one there.
template <class T>
T& Present(T& object) {
  return *std::launder(std::addressof(object));
}

/// Returns true if `object` is exactly a T and not a derived class. It compares the vtable pointers at the
/// start of the objects, because typeid would crash on classes of a host compiled without RTTI. If the
/// program has two copies of T's vtable, a T can be mistaken for a derived object.
template <class T>
bool IsExactly(const T& object) {
  static_assert(std::is_polymorphic_v<T>);
  static const T plain;
  return std::memcmp(static_cast<const void*>(&Present(object)), static_cast<const void*>(&plain),
                     sizeof(void*)) == 0;
}

}  // namespace zvuti::wire
