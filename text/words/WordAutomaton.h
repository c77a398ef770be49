// WordAutomaton: finds all words of a list in one walk over a text (Aho and Corasick, 1975).
//
// It reads characters of GBK, not bytes, so that a match can begin only where a character begins. Its
// states are the nodes of the words' trie; falling back from a node leads to the longest proper suffix
// of it that is a node, too. It is made to stand behind a filter: a walk begins where a word may begin,
// and ends where what is left of it is too short to be worth more than the filter's look ahead.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "gbk/CodePage936.h"
#include "text/words/FilterBits.h"
#include "text/words/ProbeTable.h"

namespace zvuti {

/// A character folded to its capital: the byte, or lead byte times 256 and trail byte. A lead byte at
/// the end of a text is a character of its own.
struct Character {
  std::uint16_t code;
  std::uint8_t length;  // in bytes
};

/// REQUIRES: a character of a zero-terminated text begins at `text`.
inline Character CharacterAt(const char* text) {
  if (gbk::CharLength(text) == 2)
    return {static_cast<std::uint16_t>(ByteAt(text, 0) << 8 | ByteAt(text, 1)), 2};
  return {static_cast<unsigned char>(gbk::ToUpper(*text)), 1};
}

/// The first four bytes of a text, folded; the characters that lie within have `length` bytes, 3 or 4.
struct Prefix {
  static constexpr std::size_t kBytes = 4;

  /// REQUIRES: four bytes at `text`, where a character begins.
  explicit Prefix(const char* text) {
    if (gbk::IsLeadByte(text[0]) && gbk::IsLeadByte(text[2])) {  // nearly all
      bytes = FourBytesAt(text);
      return;
    }
    bool isTrail = false;
    for (std::size_t i = 0; i < kBytes; ++i) {
      const char folded = isTrail ? text[i] : gbk::ToUpper(text[i]);
      bytes |= std::uint32_t{static_cast<unsigned char>(folded)} << 8 * i;
      isTrail = !isTrail && gbk::IsLeadByte(text[i]);
    }
    if (isTrail) length = kBytes - 1;
  }

  std::uint32_t bytes = 0;
  std::size_t length = kBytes;
};

class WordAutomaton {
 public:
  using Index = std::uint32_t;
  static constexpr Index kRoot = 0;
  static constexpr Index kNone = 0xFFFFFFFF;

  /// A word, as the end of a match.
  struct Word {
    std::uint32_t length;  // in bytes
    Index link;            // kNone for most
  };
  /// What few words have.
  struct Link {
    /// The longest shorter word that ends at the same place and is to be looked at, kNone where there is
    /// none. Behind a word that cannot overlap itself, and so is always masked whole, these are only those
    /// that can: the others hide under its mask.
    Index next = kNone;
    Index loop = kNone;  // number among the words that can overlap themselves, kNone for one that cannot
  };

  /// What each step of a walk looks at. It is kept small: long lists have more nodes than a cache has room
  /// for.
  struct Node {
    static constexpr std::uint8_t kDeep = 0xFF;

    std::uint16_t label;   // code of the character that leads here
    bool isNextChild : 1;  // the node behind this one is a child of it
    bool hasBranches : 1;  // it has children elsewhere
    bool hasWord : 1;      // a word ends here
    /// Bytes of the fallback, kDeep for as many as a prefix has or more. Where there are fewer, the filter
    /// and the entries see further than the fallback, and a walk ends.
    std::uint8_t rest;
  };

  const Node& NodeAt(Index node) const { return nodes_[node]; }
  /// The longest word that ends at a node. REQUIRES: one does.
  Index WordOf(Index node) const { return wordOfNode_[node]; }
  Index FallbackOf(Index node) const { return fallbacks_[node]; }
  /// In bytes.
  std::size_t LengthOf(Index word) const { return words_[word].length; }
  Link LinkOf(Index word) const {
    const Index link = words_[word].link;
    return link == kNone ? Link() : links_[link];
  }
  /// How many words can overlap themselves.
  Index Loops() const { return loops_; }

  /// The node of the characters within a prefix, kNone where no word begins with it. It is kRoot, the start
  /// of any walk, where a word ends on the way and must not be passed by.
  Index Enter(std::uint32_t prefix) const {
    const Entry* entry = entries_.Find(HashOf(prefix), [&](const Entry& e) { return e.prefix == prefix; });
    return entry ? entry->node : kNone;
  }

  /// The child of `node` by the character `label`, or kRoot.
  Index Child(Index node, std::uint16_t label) const {
    const Node& from = nodes_[node];
    if (from.isNextChild && nodes_[node + 1].label == label) return node + 1;
    return from.hasBranches ? Branch(node, label) : kRoot;
  }

 private:
  friend class WordAutomatonBuilder;

  // A child that does not lie behind its parent.
  struct Edge {
    bool IsFree() const { return child == kRoot; }

    Index parent = kRoot;
    Index child = kRoot;
  };
  struct Entry {
    bool IsFree() const { return node == kNone; }

    std::uint32_t prefix = 0;
    Index node = kNone;
  };

  static std::uint32_t HashOf(std::uint32_t prefix) { return prefix * 0x9E3779B1u; }
  static std::uint32_t HashOf(Index node, std::uint16_t label) {
    return (node * 0x9E3779B1u + label) * 0x85EBCA6Bu;
  }

  Index Branch(Index node, std::uint16_t label) const {
    const auto isSought = [&](const Edge& edge) {
      return edge.parent == node && nodes_[edge.child].label == label;
    };
    const Edge* edge = edges_.Find(HashOf(node, label), isSought);
    return edge ? edge->child : kRoot;
  }

  std::vector<Node> nodes_;
  std::vector<Index> wordOfNode_;  // kNone where none ends
  std::vector<Index> fallbacks_;   // by node
  std::vector<Word> words_;
  std::vector<Link> links_;
  ProbeTable<Edge> edges_;
  ProbeTable<Entry> entries_;
  Index loops_ = 0;
};

}  // namespace zvuti
