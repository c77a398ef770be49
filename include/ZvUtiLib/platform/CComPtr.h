// CComPtr: holds one counted reference to an interface, or none.
#pragma once

#include <memory>

/// The object behind it lives until the last reference is gone. It never throws. Copies share the object,
/// by a reference of their own.
template <class T>
class CComPtr {
 public:
  /// Empty.
  CComPtr() noexcept = default;
  /// Shares `object` by one more reference; null gives an empty pointer.
  CComPtr(T* object) noexcept : object_(object) {  // NOLINT(google-explicit-constructor): as users expect
    if (object_) object_->AddRef();
  }
  /// Shares the object of `other`.
  CComPtr(const CComPtr& other) noexcept : CComPtr(other.object_) {}
  /// Takes over the reference of `other` and leaves it empty.
  CComPtr(CComPtr&& other) noexcept : object_(other.Detach()) {}
  ~CComPtr() { Release(); }

  /// Takes the new reference before it gives the old one back, so an object may be assigned to itself.
  CComPtr& operator=(T* object) noexcept {
    if (object) object->AddRef();
    Attach(object);
    return *this;
  }
  /// Shares the object of `other` in place of its own.
  CComPtr& operator=(const CComPtr& other) noexcept {
    if (this != std::addressof(other)) *this = other.object_;
    return *this;
  }
  /// Takes over the reference of `other`, which is left empty, in place of its own.
  CComPtr& operator=(CComPtr&& other) noexcept {
    T* const object = other.Detach();
    Attach(object);
    return *this;
  }

  /// Gives the reference back and leaves the pointer empty.
  void Release() noexcept { Attach(nullptr); }
  /// Takes over a reference that the caller holds, in place of its own.
  void Attach(T* object) noexcept {
    T* const old = object_;
    object_ = object;
    if (old) old->Release();
  }
  /// Hands the reference to the caller and leaves the pointer empty.
  T* Detach() noexcept {
    T* const object = object_;
    object_ = nullptr;
    return object;
  }

  /// The object, or null. The reference stays the pointer's.
  operator T*() const noexcept { return object_; }  // NOLINT(google-explicit-constructor): as users expect
  T* operator->() const noexcept { return object_; }
  /// Where a call stores the reference that it gives. REQUIRES: the pointer is empty.
  T** operator&() noexcept { return &object_; }  // NOLINT(google-runtime-operator): as users expect

 private:
  T* object_ = nullptr;
};
