#include "platform/xml/XmlTree.h"

#include <algorithm>
#include <cstring>
#include <random>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"

namespace zvuti::xml {
namespace {

constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61) - 1;

// A number that is a * b modulo kPrime, below 2^63. REQUIRES: a * b < 2^124.
std::uint64_t Product(std::uint64_t a, std::uint64_t b) {
#if defined(__SIZEOF_INT128__)
  __extension__ using Wide = unsigned __int128;
  const Wide product = Wide{a} * b;
  return static_cast<std::uint64_t>(product & kPrime) + static_cast<std::uint64_t>(product >> 61);
#else
  // 32-bit targets have no 128-bit numbers: long multiplication by halves.
  constexpr std::uint64_t kLow = 0xFFFFFFFF;
  const std::uint64_t low = (a & kLow) * (b & kLow), left = (a >> 32) * (b & kLow);
  const std::uint64_t right = (a & kLow) * (b >> 32), middle = (low >> 32) + (left & kLow) + (right & kLow);
  const std::uint64_t low64 = middle << 32 | (low & kLow);
  const std::uint64_t high64 = (a >> 32) * (b >> 32) + (left >> 32) + (right >> 32) + (middle >> 32);
  return (low64 & kPrime) + (high64 << 3 | low64 >> 61);
#endif
}

// Drawn once: 1 to kPrime - 1.
std::uint64_t ProcessKey() {
  static const std::uint64_t key = [] {
    std::random_device random;
    return (std::uint64_t{random()} << 32 | random()) % (kPrime - 1) + 1;
  }();
  return key;
}

// The value at `key` of the polynomial that has pieces of seven bytes for its coefficients, modulo the prime
// 2^61 - 1 (Carter and Wegman, "Universal classes of hash functions", 1979). Two different names of n pieces
// have the same value for n keys at most, and there are 2^61 keys.
std::uint64_t HashOf(std::string_view name, std::uint64_t key) {
  constexpr std::size_t kPiece = 7;
  static_assert(std::uint64_t{1} << 8 * kPiece < kPrime, "two pieces would have one value");
  std::uint64_t hash = 0;
  for (std::size_t at = 0; at < name.size(); at += kPiece) {
    std::uint64_t piece = 0;
    std::memcpy(&piece, name.data() + at, std::min(kPiece, name.size() - at));
    hash = Product(hash + piece, key);
    if (hash >= kPrime) hash -= kPrime;
  }
  return hash;
}

}  // namespace

NameTable::NameTable() : key_(ProcessKey()) {}

NameId NameTable::Intern(std::string_view name) {
  if (spans_.size() * 2 >= slots_.size()) Grow();
  const std::size_t slot = SlotOf(name);
  if (slots_[slot] != kNoName) return slots_[slot];
  const Span span{static_cast<std::uint32_t>(text_.size()), static_cast<std::uint32_t>(name.size())};
  text_ += name;
  spans_.push_back(span);
  return slots_[slot] = static_cast<NameId>(spans_.size() - 1);
}

NameId NameTable::Find(std::string_view name) const {
  return slots_.empty() ? kNoName : slots_[SlotOf(name)];
}

// Where `name` stands, or the free slot where it belongs.
std::size_t NameTable::SlotOf(std::string_view name) const {
  std::size_t slot = static_cast<std::size_t>(HashOf(name, key_)) & (slots_.size() - 1);
  while (slots_[slot] != kNoName && At(slots_[slot]) != name) slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

void NameTable::Grow() {
  std::vector<NameId> larger(slots_.empty() ? 32 : slots_.size() * 2, kNoName);
  slots_.swap(larger);
  for (NameId id = 0; id < spans_.size(); ++id) slots_[SlotOf(At(id))] = id;
}

std::string XmlTree::ToGbk(std::string_view own) const {
  return encoding == Encoding::kGbk ? std::string(own) : gbk::FromUtf8(own);
}

std::size_t XmlTree::ToUtf16(std::string_view own, char16_t* out) const {
  return encoding == Encoding::kGbk ? gbk::ToUtf16(own, out) : gbk::Utf8ToUtf16(own, out);
}

std::optional<std::string> XmlTree::FromUtf8(std::string_view utf8) const {
  if (encoding == Encoding::kUtf8 || IsAscii(utf8)) return std::string(utf8);
  std::string own = gbk::FromUtf8(utf8);
  if (gbk::ToUtf8(own) != utf8) return std::nullopt;  // a best fit or a question mark
  return own;
}

NodeId XmlTree::Add(NodeKind kind, NameId name, NodeId parent) {
  const auto id = static_cast<NodeId>(nodes.size());
  Node& node = nodes.emplace_back();
  node.kind = kind;
  node.name = name;
  node.parent = parent;
  node.end = id + 1;
  node.preservesSpace = nodes[parent].preservesSpace;
  ++nodes[parent].children;
  return id;
}

const Attribute* XmlTree::FindAttribute(NodeId id, NameId name) const {
  if (!IsElement(id)) return nullptr;
  const Span span = nodes[id].content;
  for (std::uint32_t i = span.first; i < span.first + span.count; ++i) {
    if (attributes[i].name == name) return &attributes[i];
  }
  return nullptr;
}

// An element has few attributes, which are compared sooner than the name is hashed.
const Attribute* XmlTree::FindAttribute(NodeId element, std::string_view own) const {
  const Span span = nodes[element].content;
  for (std::uint32_t i = span.first; i < span.first + span.count; ++i) {
    if (names.At(attributes[i].name) == own) return &attributes[i];
  }
  return nullptr;
}

}  // namespace zvuti::xml
