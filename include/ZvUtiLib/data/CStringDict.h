// CStringDict: a short-lived dictionary of text keys and values.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/SizedMemory.h>

/// A hash table that grows by one bucket at a time. The order of visiting depends only on the keys, not on
/// the order of insertion: by bucket, and within a bucket by key. Keys compare as unsigned bytes. Keys and
/// values end at a zero byte.
///
/// The hash is not secret, so a peer can choose keys that all fall into one bucket. Long buckets are
/// therefore searched with a tree: n pairs cost n log n steps, whatever the keys are.
///
/// Throws std::bad_alloc if an allocation fails; the pairs are then unchanged, except that
/// Parse keeps those stored before. More than 76,695,844 pairs
/// throw std::length_error. One object may be used by one thread at a time.
class ZVUTILIB_API CStringDict : public CBasicObject {
 public:
  CStringDict();
  CStringDict(const CStringDict&) = delete;
  CStringDict& operator=(const CStringDict&) = delete;
  ~CStringDict() override;

  /// Stores the value under the key and replaces any earlier one. A null value is stored as an empty text.
  virtual void SetValue(const CTextString& key, const char* value);

  /// Parses a text of the form key=value&key=value and stores each pair with SetValue. The first byte of
  /// `separators` separates a key from its value, the second separates pairs. White space around keys and
  /// values is removed, and the letters A to Z in keys become lower case, even where they are trail bytes
  /// of double-byte characters. Parses up to `length` bytes, or the whole text if `length` is negative; a
  /// zero byte ends the text in either case. A pair without a key, or without the first separator, is
  /// ignored.
  void Parse(const char* text, const char* separators, int length = -1);

  /// Calls `(context->*callback)(key, value)` with two `const char*` for each pair. Both are valid during
  /// the call. The callback's result is ignored.
  template <class Context, class Class, class Function>
  void Visit(Context* context, Function Class::*callback) const {
    struct Target {
      Context* context;
      Function Class::*callback;
    } target{context, callback};
    Walk(
        [](void* state, const char* key, const char* value) {
          const Target& to = *static_cast<const Target*>(state);
          (to.context->*to.callback)(key, value);
        },
        &target);
  }

 private:
  struct Key;
  struct Node;
  struct NodeDeleter;
  struct LongBuckets;
  struct Place {
    std::uint32_t bucket;
    Node** link;   // holds the first entry of the bucket whose key is not less, or null
    bool isFound;  // that entry's key is equal
  };

  template <class... Arguments>
  static Node* NewNode(const Arguments&... arguments);
  void Walk(void (*visitor)(void* state, const char* key, const char* value), void* state) const;
  void OpenBucket();
  std::uint32_t BucketOf(std::uint32_t hash) const;
  Place FindPlace(const Key& key);
  void Link(Node* node, const Place& place);

  std::vector<Node*, SizedAllocator<Node*>> buckets_;  // the first entry of each
  std::unique_ptr<LongBuckets> long_;                  // created for the first long bucket
  std::uint32_t count_ = 0;
  std::uint32_t mask_ = 1;
  std::uint32_t bucketCount_ = 1;
};
