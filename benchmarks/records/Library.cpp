// The library's own codec, a plain reader that reads field by field, and the lower bound: one copy of the
// bytes.
#include <concepts>
#include <cstring>
#include <memory>
#include <string_view>

#include "benchmarks/records/Codec.h"

namespace bench {
namespace {

// A new stream that contains one value.
struct Encoded {
  template <class T>
  explicit Encoded(const T& value) {
    if constexpr (requires { value.Write(stream); }) {
      value.Write(stream);
    } else {
      stream << value;
    }
  }
  CStreamReader stream;
};

// A message arrives as bytes, and the client puts them on a stream. That copy counts as part of decoding.
struct Library {
  static constexpr const char* kName = "library";

  template <class T>
  static const T& Prepare(const T& value) {
    return value;
  }
  static CUtiBundleTable Prepare(const BundleTable& value) {
    CUtiBundleTable table;
    table.Groups = value.Groups;
    table.Bundles = value.Bundles;
    return table;
  }
  template <class T>
  static Encoded Encode(const T& value) {
    return Encoded(value);
  }
  // Two functions instead of one with `if constexpr`: a value returned from an inner scope would be copied.
  template <class T>
  static T Decode(std::string_view bytes) {
    CStreamReader stream(bytes.data(), static_cast<unsigned>(bytes.size()));
    T value;
    stream >> value;
    return value;
  }
  template <std::same_as<BundleTable> T>
  static CUtiBundleTable Decode(std::string_view bytes) {
    CStreamReader stream(bytes.data(), static_cast<unsigned>(bytes.size()));
    CUtiBundleTable table;
    table.Read(stream);
    return table;
  }
  template <class T, class Decoded>
  static T ToValue(const Decoded& decoded) {
    if constexpr (std::is_same_v<T, BundleTable>) {
      return {decoded.Groups, decoded.Bundles};
    } else {
      return decoded;
    }
  }
  static std::string_view ViewOf(const std::string& bytes) { return bytes; }
  static std::string_view ViewOf(const Encoded& encoded) {
    const CStreamReader& stream = encoded.stream;
    return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
  }
};

// One call per field, in wire order. Each call moves the remaining bytes to the front of the stream.
void ReadItem(CStreamReader& in, ItemRecord& item) {
  in >> item.Tag >> item.ItemKey >> item.ItemId >> item.StartTime >> item.ValidDays >> item.DailyValue;
  if (item.HasCountOnWire()) {
    in >> item.Count;
  } else {
    item.SetCount(1);
  }
  in >> item.TailByte;
}

Items ReadPlainly(std::string_view bytes) {
  CStreamReader in(bytes.data(), static_cast<unsigned>(bytes.size()));
  Items items;
  std::uint16_t count = 0;
  in >> count;
  for (unsigned i = 0; i < count; ++i) {
    ItemRecord item;
    ReadItem(in, item);
    items.push_back(item);
  }
  return items;
}

// The work that no codec can avoid: when encoding, copying the bytes into a new block; when decoding, copying
// a value, which makes the same allocations.
template <class T>
void RegisterLimit(const std::string& subject, const T& value) {
  const auto encoded = std::make_shared<Encoded>(Library::Prepare(value));
  benchmark::RegisterBenchmark(("Encode" + Row(subject, "copy")).c_str(), [encoded](auto& state) {
    const std::string_view bytes = Library::ViewOf(*encoded);
    Measure(
        state,
        [&] {
          std::unique_ptr<char[]> block(new char[bytes.size()]);
          std::memcpy(block.get(), bytes.data(), bytes.size());
          return block;
        },
        [&](const auto& block) { return std::memcmp(block.get(), bytes.data(), bytes.size()) == 0; });
  });
  benchmark::RegisterBenchmark(("Decode" + Row(subject, "copy")).c_str(), [value](auto& state) {
    Measure(
        state, [&] { return T(value); }, [&](const T& copy) { return IsSame(value, copy); });
  });
}

void RegisterPlain() {
  benchmark::RegisterBenchmark("DecodeItems1000/plain", [](auto& state) {
    const Items items = MakeItems(1000);
    const Encoded encoded(items);
    Measure(
        state, [&] { return ReadPlainly(Library::ViewOf(encoded)); },
        [&](const Items& read) { return IsSame(items, read); });
  });
}

// Decodes into a new sequence whose memory is in none of the caches near the processor, as in a program that
// has used other memory in the meantime. In the other rows, each sequence gets the memory of the previous
// one.
void RegisterFresh(std::size_t count) {
  const std::string name = Row("DecodeFreshItems" + std::to_string(count), Library::kName);
  benchmark::RegisterBenchmark(name.c_str(), [count](auto& state) {
    constexpr std::size_t kBeyondCaches = 16 << 20;  // bytes
    const Items items = MakeItems(count);
    const Encoded encoded(items);
    std::vector<Items> targets(2 + kBeyondCaches / (count * sizeof(ItemRecord)));
    std::size_t next = 0;
    const auto decode = [&] {
      Items& target = targets[next++ % targets.size()];
      Items().swap(target);
      target = Library::Decode<Items>(Library::ViewOf(encoded));
    };
    // Until the heap keeps the memory, the cost is that of getting it from the host system.
    while (next < 3 * targets.size()) decode();
    for (auto _ : state) decode();
    if (targets[0] != items) state.SkipWithError("the result is wrong");
  });
}

const bool kRegistered = [] {
  RegisterCodec<Library>();
  VisitRecords([](const std::string& subject, const auto& value) { RegisterLimit(subject, value); });
  RegisterPlain();
  // Rows that show how the cost grows with the size.
  for (const std::size_t items : {4000, 16000}) {
    RegisterRecord<Library>("Items" + std::to_string(items), MakeItems(items));
  }
  for (const std::size_t items : {1000, 65535}) RegisterFresh(items);
  for (const std::size_t items : {400, 4000, 40000}) {
    RegisterRecord<Library>("Snapshot" + std::to_string(items), MakeSnapshot(items));
  }
  for (const std::size_t bundles : {1250, 2500, 5000}) {
    RegisterRecord<Library>("Bundles" + std::to_string(bundles), MakeBundles(bundles));
  }
  return true;
}();

}  // namespace
}  // namespace bench
