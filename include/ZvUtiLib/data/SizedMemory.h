// Sized memory: heap blocks that store their own size, an allocator over them, and the root class of the
// data classes, whose objects live in such blocks.
//
// Memory allocated here must be freed here, never through the plain heap. Thread safety is that of the
// underlying heap.
#pragma once

#include <cstddef>
#include <limits>
#include <new>

#include <ZvUtiLib/Export.h>

/// Returns a payload of `size` uninitialized bytes, or null if the heap refuses. The 4 bytes before the
/// payload hold its size as a 32-bit number. The payload is aligned like any heap block on 64-bit targets,
/// and to 4 bytes on 32-bit targets.
ZVUTILIB_API void* SizedAlloc(unsigned size) noexcept;

/// Frees a payload; null does nothing.
ZVUTILIB_API void SizedFree(void* payload) noexcept;

/// Standard allocator over SizedAlloc. Throws std::bad_alloc if an allocation fails.
template <class T>
class SizedAllocator {
 public:
  using value_type = T;  ///< required by the standard library

  SizedAllocator() = default;
  /// All instances share one heap, so each may free what another allocated.
  template <class U>
  SizedAllocator(const SizedAllocator<U>&) noexcept {}  // NOLINT(google-explicit-constructor)

  /// Allocates room for `count` elements. Throws std::bad_alloc if the heap refuses or the size in bytes
  /// exceeds 32 bits.
  T* allocate(std::size_t count) {
    if (count > std::numeric_limits<unsigned>::max() / sizeof(T)) throw std::bad_alloc();
    void* block = SizedAlloc(static_cast<unsigned>(count * sizeof(T)));
    if (!block) throw std::bad_alloc();
    return static_cast<T*>(block);
  }
  /// Frees a block.
  void deallocate(T* block, std::size_t) noexcept { SizedFree(block); }

  /// Any two are equal.
  friend bool operator==(const SizedAllocator&, const SizedAllocator&) { return true; }
  friend bool operator!=(const SizedAllocator&, const SizedAllocator&) { return false; }
};

/// Root of the data classes. Objects created with `new` live in sized blocks, and `new` returns null if the
/// heap refuses.
class ZVUTILIB_API CBasicObject {
 public:
  CBasicObject() = default;
  CBasicObject(const CBasicObject&) = default;
  CBasicObject& operator=(const CBasicObject&) = default;
  virtual ~CBasicObject();

  /// Returns a sized block, or null if the heap refuses; the constructor then does not run.
  static void* operator new(std::size_t size) noexcept;
  static void* operator new[](std::size_t size) noexcept;
  /// The same, as none of these throws. For placement, use the global `new`.
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return operator new(size); }
  static void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return operator new[](size);
  }
  /// Frees the block; null does nothing.
  static void operator delete(void* payload) noexcept { SizedFree(payload); }
  static void operator delete[](void* payload) noexcept { SizedFree(payload); }
  /// Called if the constructor throws in a `new (std::nothrow)`.
  static void operator delete(void* payload, const std::nothrow_t&) noexcept { SizedFree(payload); }
  static void operator delete[](void* payload, const std::nothrow_t&) noexcept { SizedFree(payload); }
};
