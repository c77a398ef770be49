// Documents like those that the lobby reads, and what a walk over one must find.
#pragma once

#include <cstddef>
#include <string>

#include "benchmarks/Common.h"

namespace bench {

/// What a walk finds. Text is counted in characters, so that the counts are the same in every encoding.
struct Seen {
  std::size_t elements = 0;
  std::size_t numbers = 0;     ///< sum of the id attributes
  std::size_t nameBytes = 0;   ///< length of all element names
  std::size_t characters = 0;  ///< Chinese characters in the text of leaves and in name attributes

  friend bool operator==(const Seen&, const Seen&) = default;
};

struct Document {
  std::string text;  ///< GBK, as its declaration states
  Seen seen;
};

/// A document of about `bytes` bytes: a lobby with rooms of four players, each of whom has a text.
Document MakeDocument(std::size_t bytes);

/// Registers a row per document that loads and walks it. A peer is constructed from the text of a document;
/// its `Walk()` returns a Seen.
template <class Peer>
void RegisterXml() {
  for (const std::size_t bytes : {std::size_t{2} << 10, std::size_t{1} << 20}) {
    benchmark::RegisterBenchmark(Row("Xml", Peer::kName, bytes).c_str(), [bytes](auto& state) {
      const Document document = MakeDocument(bytes);
      {
        const Peer warm(document.text);  // one-time allocations do not belong to a document
      }
      const std::int64_t before = HeldBytes();
      {
        const Peer peer(document.text);
        state.counters["held"] = static_cast<double>(HeldBytes() - before);
      }
      Measure(
          state,
          [&] {
            const Peer peer(document.text);
            return peer.Walk();
          },
          [&](const Seen& seen) { return seen == document.seen; });
    });
  }
}

}  // namespace bench
