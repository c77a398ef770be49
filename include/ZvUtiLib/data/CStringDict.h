// CStringDict: pairs of text, key and value, for the length of one operation.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/SizedMemory.h>

/// A hash table that grows by one bucket at a time. The order of visiting follows from the keys alone,
/// whatever order they came in: by bucket, and within a bucket by key. Keys are bytes and compare as such,
/// unsigned. Keys and values end at a zero byte.
///
/// The hash is no secret, so a peer can choose keys that all fall into one bucket. A bucket that has grown
/// long is searched by a tree: n pairs cost n log n steps, whatever their keys are.
///
/// A heap that refuses a block shows as std::bad_alloc, and the pairs stay as they were. More than
/// 76,695,844 pairs throw std::length_error. One object serves one thread at a time.
class ZVUTILIB_API CStringDict : public CBasicObject {
 public:
  CStringDict();
  CStringDict(const CStringDict&) = delete;
  CStringDict& operator=(const CStringDict&) = delete;
  ~CStringDict() override;

  /// Stores the value (null: an empty one) under the key, in place of any value that the key has.
  virtual void SetValue(const CTextString& key, const char* value);

  /// Takes pairs out of a text of the form key=value&key=value and stores each by SetValue. The first
  /// byte of `separators` stands between a key and its value, the second between pairs. White space
  /// around keys and values is dropped, and the letters A to Z of keys become small ones (also where
  /// they are second bytes of double-byte characters). Looks at the first `length` bytes up to a zero
  /// byte, at all of the text for a negative length. What has no key or no value mark is passed over.
  void Parse(const char* text, const char* separators, int length = -1);

  /// Calls `(context->*callback)(key, value)` with two `const char*` for each pair; both are good
  /// during the call. Its result is not looked at.
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
    Node** link;   // where the first entry of the bucket whose key is not less hangs, or null does
    bool isFound;  // that entry has the very key
  };

  template <class... Arguments>
  static Node* NewNode(const Arguments&... arguments);
  void Walk(void (*visitor)(void* state, const char* key, const char* value), void* state) const;
  void OpenBucket();
  std::uint32_t BucketOf(std::uint32_t hash) const;
  Place FindPlace(const Key& key);
  void Link(Node* node, const Place& place);

  std::vector<Node*, SizedAllocator<Node*>> buckets_;  // the first entry of each
  std::unique_ptr<LongBuckets> long_;                  // made for the first bucket that is long
  std::uint32_t count_ = 0;
  std::uint32_t mask_ = 1;
  std::uint32_t bucketCount_ = 1;
};
