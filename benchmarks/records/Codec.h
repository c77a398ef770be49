// How a codec adds its rows.
#pragma once

#include <string>

#include "benchmarks/Common.h"
#include "benchmarks/records/Data.h"

namespace bench {

/// Registers two rows for one record: encoding and decoding.
///
/// A codec has these static members:
///   kName               its name in the table
///   Prepare(value)      the codec's own form of the value, made before measuring starts
///   Encode(prepared)    an object that holds the bytes
///   ViewOf(encoded)     the bytes in that object
///   Decode<T>(bytes)    the value, or the codec's own form of it
///   ToValue<T>(decoded) a T made from that form, for the check
template <class Codec, class T>
void RegisterRecord(const std::string& subject, const T& value) {
  benchmark::RegisterBenchmark(("Encode" + Row(subject, Codec::kName)).c_str(), [value](auto& state) {
    const auto source = Codec::Prepare(value);
    Measure(
        state, [&] { return Codec::Encode(source); },
        [&](const auto& bytes) {
          return IsSame(value, Codec::template ToValue<T>(Codec::template Decode<T>(Codec::ViewOf(bytes))));
        });
  });
  benchmark::RegisterBenchmark(("Decode" + Row(subject, Codec::kName)).c_str(), [value](auto& state) {
    const auto encoded = Codec::Encode(Codec::Prepare(value));
    const std::string bytes(Codec::ViewOf(encoded));
    state.counters["bytes"] = static_cast<double>(bytes.size());
    Measure(
        state, [&] { return Codec::template Decode<T>(bytes); },
        [&](const auto& decoded) { return IsSame(value, Codec::template ToValue<T>(decoded)); });
  });
}

/// Calls visit(subject, value) for each record.
template <class Visit>
void VisitRecords(Visit visit) {
  for (const std::size_t items : {10, 40}) visit("Snapshot" + std::to_string(items), MakeSnapshot(items));
  for (const std::size_t items : {1000, 65535}) visit("Items" + std::to_string(items), MakeItems(items));
  visit("Account", MakeAccount());
  visit("Bundles10000", MakeBundles(10000));
}

template <class Codec>
void RegisterCodec() {
  VisitRecords([](const std::string& subject, const auto& value) { RegisterRecord<Codec>(subject, value); });
}

}  // namespace bench
