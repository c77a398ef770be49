// Documents like those that the lobby reads, and what a walk over them has to see.
#pragma once

#include <cstddef>
#include <string>

#include "benchmarks/Common.h"

namespace bench {

/// What a walk counts; text in characters, which is the same in every encoding.
struct Seen {
  std::size_t elements = 0;
  std::size_t numbers = 0;     ///< sum of the id attributes
  std::size_t nameBytes = 0;   ///< of the elements' names
  std::size_t characters = 0;  ///< Chinese ones, in the text of leaves and in name attributes

  friend bool operator==(const Seen&, const Seen&) = default;
};

struct Document {
  std::string text;  ///< GBK, and says so
  Seen seen;
};

/// Rooms of players, each with a text, up to about `bytes` bytes.
Document MakeDocument(std::size_t bytes);

/// Registers load and walk of each document. `Load(text)` gives an object; `Walk(object)` what it sees.
template <class Peer>
void RegisterXml() {
  for (const std::size_t bytes : {std::size_t{2} << 10, std::size_t{1} << 20}) {
    benchmark::RegisterBenchmark(Row("Xml", Peer::kName, bytes).c_str(), [bytes](auto& state) {
      const Document document = MakeDocument(bytes);
      {
        const Peer warm(document.text);  // what is made once and stays is no part of a document
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
