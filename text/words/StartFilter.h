// StartFilter: where in a text can a word of the list start?
//
// The idea. It takes the text in blocks of eight bytes. Blocks of double-byte characters go through
// DoubleByteFilter. Positions that DoubleByteFilter names are also checked by PrefixFilter. All other blocks
// go through PrefixFilter alone. Whether a position is inside a character is checked last, and only for
// positions that the filters named.
//
// Invariant: it names every position where a word starts at the start of a character. It may name others.
//
// Costs: nearly all that a clean text costs, 6 to 12 instructions a byte.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "text/words/Character.h"
#include "text/words/DoubleByteFilter.h"
#include "text/words/PrefixFilter.h"

namespace zvuti {

class StartFilter {
 public:
  /// A filter without words, sized for `words`.
  explicit StartFilter(std::size_t words) : prefixes_(words), doubleBytes_(words) {}

  /// REQUIRES: the word is not empty and is followed by a zero byte. It may end in half a character.
  void Add(std::string_view word) {
    prefixes_.Add(word);
    doubleBytes_.Add(word);
  }

  /// Calls onStart(at), from left to right, for each character of the text where a word may start. `onStart`
  /// returns where to go on: at a character after `at`, or at text.size() to end.
  /// REQUIRES: no zero byte in the text, but one after it.
  template <class OnStart>
  void Visit(std::string_view text, OnStart onStart) const {
    if (prefixes_.HasShortWords()) {
      Walk<true, OnStart>(*this, text, onStart).Run();
    } else {
      Walk<false, OnStart>(*this, text, onStart).Run();
    }
  }

  /// True if a word of up to three bytes may start at `at`. REQUIRES: `at` < text.size(), a text as in Visit.
  bool MayStartShort(std::string_view text, std::size_t at) const {
    return prefixes_.MayStartShort(text.data() + at);
  }

 private:
  static constexpr std::size_t kBlock = PrefixFilter::kBlock;
  static constexpr std::size_t kReach = PrefixFilter::kReach;
  static_assert(kBlock == DoubleByteFilter::kBlock);

  template <bool kWithShort, class OnStart>
  class Walk;

  PrefixFilter prefixes_;
  DoubleByteFilter doubleBytes_;
};

// One visit of a text.
template <bool kWithShort, class OnStart>
class StartFilter::Walk {
 public:
  Walk(const StartFilter& filter, std::string_view text, OnStart& onStart)
      : prefixes_(filter.prefixes_), doubleBytes_(filter.doubleBytes_), text_(text), onStart_(onStart) {}

  void Run() {
    std::size_t at = 0;
    while (at + kReach <= text_.size()) {
      const char* block = text_.data() + at;
      if (gbk::AreDoubleBytes(block, kBlock)) {
        if (next_ < at) next_ = IsCharacterStart(text_, next_, at) ? at : at + 1;
        at = next_ = VisitRun(next_);
      } else {
        VisitStarts(at, prefixes_.StartsIn<kWithShort>(block));
        at = std::max(next_, at + kBlock);
      }
    }
    if (at < text_.size()) VisitTail();
  }

 private:
  // Visits double-byte characters from `at`, where a character starts. Returns where other characters start
  // or fewer than kReach bytes are left.
  std::size_t VisitRun(std::size_t at) {
    while (true) {
      at = doubleBytes_.PassOver(text_, at);
      const char* block = text_.data() + at;
      if (at + kReach > text_.size() || !gbk::AreDoubleBytes(block, kBlock)) return at;
      unsigned starts = doubleBytes_.StartsIn(block);
      while (starts != 0 && !prefixes_.MayStart<kWithShort>(block + std::countr_zero(starts))) {
        starts &= starts - 1;
      }
      at = starts == 0 ? at + kBlock : onStart_(at + static_cast<std::size_t>(std::countr_zero(starts)));
    }
  }

  // Visits the end of the text: the block whose kReach bytes end with the terminator, and the two positions
  // after it, where only words of one or two bytes fit. Positions that were checked before are checked again,
  // with the same result. A text that is too short for a block is copied.
  void VisitTail() {
    char copy[kReach] = {};
    const bool isShort = text_.size() + 1 < kReach;
    if (isShort) std::memcpy(copy, text_.data(), text_.size());
    const std::size_t first = isShort ? 0 : text_.size() + 1 - kReach;
    const char* block = isShort ? copy : text_.data() + first;
    unsigned starts = prefixes_.StartsIn<kWithShort>(block);
    for (std::size_t i = kBlock; i < kBlock + 2; ++i) {
      if (kWithShort && prefixes_.MayStartShort(block + i)) starts |= 1u << i;
    }
    VisitStarts(first, starts & ((1u << (text_.size() - first)) - 1));
  }

  // Calls onStart for the starts of a block that are not before next_ and not inside a character.
  void VisitStarts(std::size_t block, unsigned starts) {
    for (; starts != 0; starts &= starts - 1) {
      const std::size_t at = block + static_cast<std::size_t>(std::countr_zero(starts));
      if (at >= next_) next_ = IsCharacterStart(text_, next_, at) ? onStart_(at) : at + 1;
    }
  }

  const PrefixFilter& prefixes_;
  const DoubleByteFilter& doubleBytes_;
  const std::string_view text_;
  OnStart& onStart_;
  std::size_t next_ = 0;  // a character starts here, and the caller wants no earlier one
};

}  // namespace zvuti
