// WordAutomatonBuilder: fills a WordAutomaton with words, in time linear in their total length.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/words/WordAutomaton.h"

namespace zvuti {

/// Add the words, then call Finish once. Both may throw std::bad_alloc; the automaton is useless after that.
class WordAutomatonBuilder {
 public:
  /// What the edges are: characters, or bytes with the marks of ByteSteps. Shifted bytes are those of a word
  /// that starts at a trail byte of the text.
  enum class Edges : std::uint8_t { kCharacters, kBytes, kShiftedBytes };

  /// `automaton`: one without words, with room for `words`. It must outlive the builder.
  WordAutomatonBuilder(WordAutomaton& automaton, std::size_t words, Edges edges = Edges::kCharacters);

  /// REQUIRES: the word is folded, not empty, and followed by a zero byte. If the edges are characters, it
  /// ends with a whole one. Returns false if the word was added before.
  bool Add(std::string_view word);
  void Finish();

 private:
  using Index = WordAutomaton::Index;
  using Node = WordAutomaton::Node;
  static constexpr Index kRoot = WordAutomaton::kRoot;
  static constexpr Index kNone = WordAutomaton::kNone;

  // What is known of a node while the automaton is built.
  struct Draft {
    Index parent;
    Index nextOfDepth;  // links the nodes of one depth; kNone ends the list
  };

  Index AddChild(Index parent, std::uint16_t label, std::size_t depth);
  void PushNode(std::uint16_t label, const Draft& draft);
  void SetWord(Index node, Index word);
  void AddEntry(std::string_view word, Index node);
  void Complete(Index node);
  void SetFallback(Index node);
  bool CanOverlapItself(std::string_view word);

  WordAutomaton& built_;
  const Edges edges_;
  std::vector<Draft> drafts_;           // by node
  std::vector<Index> firstOfDepth_;     // by depth; the root's children have depth 0
  std::vector<std::uint32_t> borders_;  // scratch of CanOverlapItself
};

}  // namespace zvuti
