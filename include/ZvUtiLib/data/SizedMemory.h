// Sized memory: heap blocks that carry their own size, the allocator over them, and the root class
// of data support, whose objects live in such blocks.
//
// What this scheme hands out must come back through it, never through the plain heap. It is as safe
// on threads as the heap under it.
#pragma once

#include <cstddef>
#include <limits>
#include <new>

#include <ZvUtiLib/Export.h>

/// A payload of `size` bytes, not cleared, or null when the heap refuses. The size stands as a 32-bit
/// number in the 4 bytes in front of the payload; the payload is aligned like any heap block on
/// 64-bit targets, and to 4 bytes on 32-bit ones.
ZVUTILIB_API void* SizedAlloc(unsigned size) noexcept;

/// Gives a payload back; null does nothing.
ZVUTILIB_API void SizedFree(void* payload) noexcept;

/// Standard allocator over SizedAlloc. A refused block shows as std::bad_alloc.
template <class T>
class SizedAllocator {
 public:
  using value_type = T;  ///< as the standard library asks for it

  SizedAllocator() = default;
  /// All of them share one heap, so one may free what another gave.
  template <class U>
  SizedAllocator(const SizedAllocator<U>&) noexcept {}  // NOLINT(google-explicit-constructor)

  /// Room for `count` elements. Throws std::bad_alloc when the heap refuses it and beyond 32 bits of bytes.
  T* allocate(std::size_t count) {
    if (count > std::numeric_limits<unsigned>::max() / sizeof(T)) throw std::bad_alloc();
    void* block = SizedAlloc(static_cast<unsigned>(count * sizeof(T)));
    if (!block) throw std::bad_alloc();
    return static_cast<T*>(block);
  }
  /// Gives a block back.
  void deallocate(T* block, std::size_t) noexcept { SizedFree(block); }

  /// Any two are equal.
  friend bool operator==(const SizedAllocator&, const SizedAllocator&) { return true; }
  friend bool operator!=(const SizedAllocator&, const SizedAllocator&) { return false; }
};

/// Root of the data-support classes: objects made with `new` sit in sized blocks, and `new` gives
/// null when the heap refuses.
class ZVUTILIB_API CBasicObject {
 public:
  CBasicObject() = default;
  CBasicObject(const CBasicObject&) = default;
  CBasicObject& operator=(const CBasicObject&) = default;
  virtual ~CBasicObject();

  /// A sized block, or null when the heap refuses; the constructor does not run then.
  static void* operator new(std::size_t size) noexcept;
  static void* operator new[](std::size_t size) noexcept;
  /// The same: none of them throws. For an object in a place of its own there is the global `new`.
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return operator new(size); }
  static void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return operator new[](size);
  }
  /// Gives the block back; null does nothing.
  static void operator delete(void* payload) noexcept { SizedFree(payload); }
  static void operator delete[](void* payload) noexcept { SizedFree(payload); }
  /// Called where the constructor throws in a `new (std::nothrow)`.
  static void operator delete(void* payload, const std::nothrow_t&) noexcept { SizedFree(payload); }
  static void operator delete[](void* payload, const std::nothrow_t&) noexcept { SizedFree(payload); }
};
