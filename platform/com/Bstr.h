// Texts and values of the document object model, owned, made of GBK.
#pragma once

#include <ZvUtiLib/platform/XmlDom.h>

namespace zvuti {

/// A BSTR that is freed at the end of its scope.
class Bstr {
 public:
  Bstr() = default;
  /// The UTF-16 of a GBK text; null reads as "". Throws std::bad_alloc when the heap refuses.
  explicit Bstr(const char* text);
  ~Bstr() { SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;

  BSTR Get() const { return text_; }
  /// Where a call stores the text that it gives. REQUIRES: nothing is held.
  BSTR* Receive() { return &text_; }
  /// Hands the text to the caller.
  BSTR Detach();

 private:
  BSTR text_ = nullptr;
};

/// A VARIANT that is cleared at the end of its scope.
class Variant {
 public:
  /// Holds the integer 0.
  Variant();
  /// Holds the UTF-16 of a GBK text.
  explicit Variant(const char* text);
  ~Variant() { VariantClear(&value_); }
  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  const VARIANT& Get() const { return value_; }
  VARIANT* Receive() { return &value_; }

 private:
  VARIANT value_;
};

}  // namespace zvuti
