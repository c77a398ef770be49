#include <ZvUtiLib/data/CStringDict.h>

#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>

#include <ZvUtiLib/data/SizedMap.h>

#include "data/KeyValueParser.h"

namespace {

constexpr std::size_t kFirstSlots = 9;
constexpr std::size_t kMostSlots = 0x3FFFFFFF;
constexpr std::uint32_t kMostEntries = 76'695'844;
constexpr std::uint32_t kEntriesPerBucket = 4;
/// A bucket gets a tree once a search passes this many entries in it. Keys not chosen by an attacker stay far
/// below it: their buckets hold four to eight entries on average.
constexpr int kLongBucket = 32;

/// 32-bit FNV-1, except that bytes of 0x80 and above also flip the upper bits.
constexpr std::uint32_t kHashStart = 0x811C9DC5;
constexpr std::uint32_t HashWith(std::uint32_t hash, char byte) {
  return hash * 0x01000193 ^ static_cast<std::uint32_t>(static_cast<signed char>(byte));
}

// The first bytes of a key as a number that sorts like the key. Keys have no zero bytes.
std::uint64_t HeadOf(std::string_view key) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < sizeof head; ++i) {
    head = head << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
  }
  return head;
}

}  // namespace

// A key with the values that searches and splits need repeatedly.
struct CStringDict::Key {
  std::string_view text;
  std::uint32_t hash;
  std::uint64_t head = HeadOf(text);
};

struct CStringDict::Node {
  Node(const Key& of, const char* valueText) : key(of.text), value(valueText), head(of.head), hash(of.hash) {}

  /// Returns a value below, equal to or above 0 if this key is less than, equal to or greater than the other.
  int Compare(std::string_view otherText, std::uint64_t otherHead) const {
    if (head != otherHead) return head < otherHead ? -1 : 1;
    return std::string_view(key).compare(otherText);
  }

  Node* next = nullptr;
  CTextString key;
  CTextString value;
  std::uint64_t head = 0;
  std::uint32_t hash = 0;
};

struct CStringDict::NodeDeleter {
  void operator()(Node* node) const {
    std::destroy_at(node);
    SizedAllocator<Node>().deallocate(node, 1);
  }
};

// The trees of long buckets. They refer to entries that stay in their bucket's list; the list alone
// determines the order of visiting. A split drops the tree of its bucket, and so does a failed allocation.
// The list is then searched until a search is long again.
struct CStringDict::LongBuckets {
  struct ByKey {
    using is_transparent = void;
    bool operator()(const Node* a, const Node* b) const { return a->Compare(b->key, b->head) < 0; }
    bool operator()(const Node* a, const Key& b) const { return a->Compare(b.text, b.head) < 0; }
  };
  using Tree = zvuti::SizedSet<Node*, ByKey>;

  Tree* Find(std::uint32_t bucket) {
    const auto found = trees.find(bucket);
    return found == trees.end() ? nullptr : &found->second;
  }
  void Add(std::uint32_t bucket, Node* first) try {
    Tree tree;
    for (Node* node = first; node; node = node->next) tree.insert(tree.end(), node);
    trees.emplace(bucket, std::move(tree));
  } catch (const std::bad_alloc&) {
  }

  zvuti::SizedMap<std::uint32_t, Tree> trees;
};

template <class... Arguments>
CStringDict::Node* CStringDict::NewNode(const Arguments&... arguments) {
  SizedAllocator<Node> allocator;
  Node* block = allocator.allocate(1);
  try {
    return ::new (block) Node(arguments...);
  } catch (...) {
    allocator.deallocate(block, 1);
    throw;
  }
}

CStringDict::CStringDict() : buckets_(kFirstSlots) {}

CStringDict::~CStringDict() {
  for (Node* node : buckets_) {
    while (node) NodeDeleter()(std::exchange(node, node->next));
  }
}

void CStringDict::SetValue(const CTextString& key, const char* value) {
  std::uint32_t hash = kHashStart;
  const char* end = key.c_str();  // a zero byte within the key ends it
  for (; *end != '\0'; ++end) hash = HashWith(hash, *end);
  const Key sought{{key.c_str(), static_cast<std::size_t>(end - key.c_str())}, hash};
  Place place = FindPlace(sought);
  if (place.isFound) {
    (*place.link)->value = value;
    return;
  }
  if (count_ >= kMostEntries) throw std::length_error("list<T> too long");
  std::unique_ptr<Node, NodeDeleter> node(NewNode(sought, value));
  if (bucketCount_ <= count_ / kEntriesPerBucket) {
    OpenBucket();
    place = FindPlace(sought);
  }
  Link(node.release(), place);
  ++count_;
}

void CStringDict::Parse(const char* text, const char* separators, int length) {
  zvuti::ParseKeyValues(*this, text, separators, length, ParseFoldKeys | ParseTrim);
}

void CStringDict::Walk(void (*visitor)(void*, const char*, const char*), void* state) const {
  for (std::uint32_t bucket = 0; bucket < bucketCount_; ++bucket) {
    for (const Node* node = buckets_[bucket]; node; node = node->next) {
      visitor(state, node->key.c_str(), node->value.c_str());
    }
  }
}

void CStringDict::OpenBucket() {
  if (buckets_.size() - 1 <= bucketCount_) {
    const std::size_t mask = (buckets_.size() - 1) * 2 - 1;
    if (mask + 2 > kMostSlots) throw std::length_error("vector<T> too long");
    buckets_.resize(mask + 2);
    mask_ = static_cast<std::uint32_t>(mask);
  } else if (mask_ < bucketCount_) {
    mask_ = mask_ * 2 + 1;
  }

  const std::uint32_t opened = bucketCount_++;
  const std::uint32_t split = opened - (mask_ >> 1) - 1;
  if (long_) long_->trees.erase(split);
  Node* node = buckets_[split];
  Node** staying = &buckets_[split];
  Node** moving = &buckets_[opened];
  for (; node; node = node->next) {
    Node**& end = (node->hash & mask_) == split ? staying : moving;
    *end = node;
    end = &node->next;
  }
  *staying = *moving = nullptr;
}

std::uint32_t CStringDict::BucketOf(std::uint32_t hash) const {
  const std::uint32_t bucket = hash & mask_;
  return bucket < bucketCount_ ? bucket : bucket - (mask_ >> 1) - 1;
}

CStringDict::Place CStringDict::FindPlace(const Key& key) {
  const std::uint32_t bucket = BucketOf(key.hash);
  Node** link = &buckets_[bucket];
  if (LongBuckets::Tree* tree = long_ ? long_->Find(bucket) : nullptr) {
    const auto found = tree->lower_bound(key);
    if (found != tree->begin()) link = &(*std::prev(found))->next;
    return {bucket, link, found != tree->end() && (*found)->Compare(key.text, key.head) == 0};
  }
  bool isFound = false;
  int passed = 0;
  for (; Node* const node = *link; link = &node->next, ++passed) {
    if (node->head < key.head) continue;
    if (node->head > key.head) break;
    const int order = std::string_view(node->key).compare(key.text);
    isFound = order == 0;
    if (order >= 0) break;
  }
  if (passed >= kLongBucket) {
    if (!long_) long_.reset(new (std::nothrow) LongBuckets);
    if (long_) long_->Add(bucket, buckets_[bucket]);
  }
  return {bucket, link, isFound};
}

void CStringDict::Link(Node* node, const Place& place) {
  node->next = *place.link;
  *place.link = node;
  LongBuckets::Tree* const tree = long_ ? long_->Find(place.bucket) : nullptr;
  if (!tree) return;
  try {
    tree->insert(node);
  } catch (const std::bad_alloc&) {
    long_->trees.erase(place.bucket);
  }
}
