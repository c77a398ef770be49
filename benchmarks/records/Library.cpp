// The library's own codec, the same read field by field, and the limit: one copy of the bytes.
#include <cstring>
#include <memory>
#include <string_view>

#include "benchmarks/records/Data.h"

namespace bench {
namespace {

// A fresh stream with a value on it.
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

// A message arrives as bytes, which a client puts on a stream: the copy is a part of decoding.
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
  template <class T>
  static auto Decode(std::string_view bytes) {
    CStreamReader stream(bytes.data(), static_cast<unsigned>(bytes.size()));
    if constexpr (std::is_same_v<T, BundleTable>) {
      CUtiBundleTable table;
      table.Read(stream);
      return table;
    } else {
      T value;
      stream >> value;
      return value;
    }
  }
  template <class T, class Decoded>
  static T Back(const Decoded& decoded) {
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

// Each field a call of its own, as the order of the fields is told; the rest moves down at each of them.
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

// As many bytes into as large a block as the decoded items take, and out of them.
void RegisterLimit(std::size_t count) {
  const auto stream = std::make_shared<Encoded>(MakeItems(count));
  const std::string_view bytes = Library::ViewOf(*stream);
  const auto copy = [bytes, stream](auto& state, std::size_t room) {
    Measure(
        state,
        [&] {
          std::unique_ptr<char[]> block(new char[room]);
          std::memcpy(block.get(), bytes.data(), bytes.size());
          return block;
        },
        [&](const auto& block) { return std::memcmp(block.get(), bytes.data(), bytes.size()) == 0; });
  };
  const std::string subject = "Items" + std::to_string(count);
  benchmark::RegisterBenchmark(("Decode" + Row(subject, "memcpy")).c_str(), [=](auto& state) {
    copy(state, std::max(bytes.size(), count * sizeof(ItemRecord)));
  });
  benchmark::RegisterBenchmark(("Encode" + Row(subject, "memcpy")).c_str(),
                               [=](auto& state) { copy(state, bytes.size()); });
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

const bool kRegistered = [] {
  RegisterCodec<Library>();
  for (const std::size_t count : {1000, 65535}) RegisterLimit(count);
  RegisterPlain();
  return true;
}();

}  // namespace
}  // namespace bench
