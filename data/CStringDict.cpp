#include <ZvUtiLib/data/CStringDict.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "data/KeyValueParser.h"

namespace {

constexpr std::size_t kFirstSlots = 9;
constexpr std::size_t kMostSlots = 0x3FFFFFFF;
constexpr std::uint32_t kMostEntries = 76'695'844;
constexpr std::uint32_t kEntriesPerBucket = 4;

/// FNV-1 with 32 bits, except that bytes of 0x80 and above flip the upper bits as well.
constexpr std::uint32_t kHashStart = 0x811C9DC5;
constexpr std::uint32_t HashWith(std::uint32_t hash, char byte) {
  return hash * 0x01000193 ^ static_cast<std::uint32_t>(static_cast<signed char>(byte));
}

// The first bytes of a key, which has no zero byte, as a number that orders keys as they do themselves.
std::uint64_t HeadOf(std::string_view key) {
  std::uint64_t head = 0;
  for (std::size_t i = 0; i < sizeof head; ++i) {
    head = head << 8 | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
  }
  return head;
}

}  // namespace

// A key, and what is looked at again and again while a table grows.
struct CStringDict::Key {
  std::string_view text;
  std::uint32_t hash;
  std::uint64_t head = HeadOf(text);
};

struct CStringDict::Node {
  Node() = default;
  Node(const Key& of, const char* valueText) : key(of.text), value(valueText), head(of.head), hash(of.hash) {}

  Node* next = this;
  Node* previous = this;
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

CStringDict::CStringDict() : edges_(kFirstSlots), head_(NewNode()) {
  std::fill(edges_.begin(), edges_.end(), head_);
}

CStringDict::~CStringDict() {
  while (head_->next != head_) {
    Node* node = head_->next;
    Unlink(node);
    NodeDeleter()(node);
  }
  NodeDeleter()(head_);
}

void CStringDict::SetValue(const CTextString& key, const char* value) {
  std::uint32_t hash = kHashStart;
  const char* end = key.c_str();  // a zero byte within the key ends it
  for (; *end != '\0'; ++end) hash = HashWith(hash, *end);
  const Key sought{{key.c_str(), static_cast<std::size_t>(end - key.c_str())}, hash};
  Place place = FindPlace(sought);
  if (place.isFound) {
    place.node->value = value;
    return;
  }
  if (count_ >= kMostEntries) throw std::length_error("list<T> too long");
  std::unique_ptr<Node, NodeDeleter> node(NewNode(sought, value));
  if (bucketCount_ <= count_ / kEntriesPerBucket) {
    OpenBucket();
    place = FindPlace(sought);
  }
  MoveEdges(place.bucket, place.node, node.get());
  Link(node.release(), place.node);
  ++count_;
}

void CStringDict::Parse(const char* text, const char* separators, int length) {
  zvuti::ParseKeyValues(*this, text, separators, length, ParseFoldKeys | ParseTrim);
}

void CStringDict::Walk(void (*visitor)(void*, const char*, const char*), void* state) const {
  for (const Node* node = head_->next; node != head_; node = node->next) {
    visitor(state, node->key.c_str(), node->value.c_str());
  }
}

void CStringDict::OpenBucket() {
  if (edges_.size() - 1 <= bucketCount_) {
    const std::size_t mask = (edges_.size() - 1) * 2 - 1;
    if (mask + 2 > kMostSlots) throw std::length_error("vector<T> too long");
    edges_.resize(mask + 2, head_);
    mask_ = static_cast<std::uint32_t>(mask);
  } else if (mask_ < bucketCount_) {
    mask_ = mask_ * 2 + 1;
  }

  const std::uint32_t opened = bucketCount_;
  const std::uint32_t split = opened - (mask_ >> 1) - 1;
  // In the bucket before the opened one, the first entry that moves becomes the end of the walk, unless
  // it was the last of the list already.
  for (Node* node = edges_[split]; node != edges_[split + 1] && node != head_;) {
    Node* const next = node->next;
    if ((node->hash & mask_) != split) {
      MoveEdges(split, node, next);
      Unlink(node);
      MoveEdges(opened, head_, node);
      Link(node, head_);
    }
    node = next;
  }
  ++bucketCount_;
}

std::uint32_t CStringDict::BucketOf(std::uint32_t hash) const {
  const std::uint32_t bucket = hash & mask_;
  return bucket < bucketCount_ ? bucket : bucket - (mask_ >> 1) - 1;
}

CStringDict::Place CStringDict::FindPlace(const Key& key) const {
  const std::uint32_t bucket = BucketOf(key.hash);
  Node* const end = edges_[bucket + 1];
  Node* node = edges_[bucket];
  for (; node != end; node = node->next) {
    if (node->head < key.head) continue;
    if (node->head > key.head) break;
    const int order = std::string_view(node->key).compare(key.text);
    if (order >= 0) return {node, bucket, order == 0};
  }
  return {node, bucket, false};
}

void CStringDict::MoveEdges(std::uint32_t bucket, const Node* from, Node* to) {
  // Buckets lie in order, so only edges directly before this one can stand on the same entry.
  for (std::size_t i = std::size_t{bucket} + 1; i > 0 && edges_[i - 1] == from; --i) edges_[i - 1] = to;
}

void CStringDict::Link(Node* node, Node* place) {
  node->next = place;
  node->previous = place->previous;
  place->previous->next = node;
  place->previous = node;
}

void CStringDict::Unlink(Node* node) {
  node->previous->next = node->next;
  node->next->previous = node->previous;
}
