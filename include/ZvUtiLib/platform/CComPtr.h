// CComPtr: a smart pointer that holds one counted reference to an interface, or none.
#pragma once

#include <memory>

/// The object lives until its last reference is released. Each copy holds its own reference to the shared
/// object. No operation throws.
template <class T>
class CComPtr {
 public:
  /// Creates an empty pointer.
  CComPtr() noexcept = default;
  /// Shares `object` and adds a reference to it; null gives an empty pointer.
  CComPtr(T* object) noexcept : object_(object) {  // NOLINT(google-explicit-constructor): as users expect
    if (object_) object_->AddRef();
  }
  /// Shares the object of `other`.
  CComPtr(const CComPtr& other) noexcept : CComPtr(other.object_) {}
  /// Takes over the reference of `other` and leaves it empty.
  CComPtr(CComPtr&& other) noexcept : object_(other.Detach()) {}
  ~CComPtr() { Release(); }

  /// Adds the new reference before it releases the old one, so an object may be assigned to itself.
  CComPtr& operator=(T* object) noexcept {
    if (object) object->AddRef();
    Attach(object);
    return *this;
  }
  /// Shares the object of `other` instead of the current one.
  CComPtr& operator=(const CComPtr& other) noexcept {
    if (this != std::addressof(other)) *this = other.object_;
    return *this;
  }
  /// Takes over the reference of `other`, which is left empty, and releases the current one.
  CComPtr& operator=(CComPtr&& other) noexcept {
    T* const object = other.Detach();
    Attach(object);
    return *this;
  }

  /// Releases the reference and leaves the pointer empty.
  void Release() noexcept { Attach(nullptr); }
  /// Takes over a reference that the caller holds, and releases the current one.
  void Attach(T* object) noexcept {
    T* const old = object_;
    object_ = object;
    if (old) old->Release();
  }
  /// Passes the reference to the caller and leaves the pointer empty.
  T* Detach() noexcept {
    T* const object = object_;
    object_ = nullptr;
    return object;
  }

  /// Returns the object, or null. The pointer keeps its reference.
  operator T*() const noexcept { return object_; }  // NOLINT(google-explicit-constructor): as users expect
  T* operator->() const noexcept { return object_; }
  /// Returns the place for a call to store a new reference. REQUIRES: the pointer is empty.
  T** operator&() noexcept { return &object_; }  // NOLINT(google-runtime-operator): as users expect

 private:
  T* object_ = nullptr;
};
