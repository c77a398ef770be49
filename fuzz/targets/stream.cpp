// The stream's forms of numbers, texts, sequences and maps: steps on a stream, and the same on a string.
#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/Containers.h>

#include "fuzz/Input.h"

namespace {

// The stream's contract, written down over a plain string.
struct Model {
  std::string bytes;

  void Take(void* out, std::size_t count) {
    if (count == 0 || bytes.size() < count) return;
    std::memcpy(out, bytes.data(), count);
    bytes.erase(0, count);
  }
  template <class T>
  T Number(T value = 0) {
    Take(&value, sizeof value);
    return value;
  }
};

template <class T, std::enable_if_t<std::is_integral_v<T>, int> = 0>
void Read(Model& in, T& value) {
  value = in.Number(value);
}
void Read(Model& in, std::string& text) {
  text.resize(in.Number<std::uint16_t>());
  in.Take(text.data(), text.size());
}
template <class T>
void Read(Model& in, std::vector<T>& items) {
  for (unsigned count = in.Number<std::uint16_t>(); count > 0; --count) {
    items.emplace_back();
    Read(in, items.back());
  }
}
void Read(Model& in, std::map<std::int32_t, std::int32_t>& map) {
  // With no bytes left every further entry is the same assignment.
  for (auto count = in.Number<std::int32_t>(); count > 0; --count) {
    const bool isLast = in.bytes.size() < 4;
    const auto key = in.Number<std::int32_t>();
    map[key] = in.Number<std::int32_t>();
    if (isLast) break;
  }
}

template <class T>
void Write(Model& out, const T& value) {
  out.bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}
void Write(Model& out, const std::string& text) {
  Write(out, static_cast<std::uint16_t>(text.size()));
  out.bytes.append(text, 0, text.size() & 0xFFFF);
}
template <class T>
void Write(Model& out, const std::vector<T>& items) {
  const auto count = static_cast<std::uint16_t>(items.size());
  Write(out, count);
  for (unsigned i = 0; i < count; ++i) Write(out, items[i]);
}
void Write(Model& out, const std::map<std::int32_t, std::int32_t>& map) {
  Write(out, static_cast<std::uint32_t>(map.size()));
  for (const auto& [key, value] : map) {
    Write(out, key);
    Write(out, value);
  }
}

// Each step compares all bytes, and reading moves them.
constexpr std::size_t kMostBytes = 1'000;
constexpr int kMostSteps = 100;

/// The largest count that an input may use. Large ones make tens of thousands of elements, so a few inputs
/// with these will do; the others take such counts as numbers.
std::uint16_t LargestCount(std::string_view input) {
  return fuzz::IsChosen(input, 512) ? 0xFFFF : fuzz::IsChosen(input, 16) ? 1000 : 50;
}

/// True if the next count, or the count in the first element after it, is larger than that.
bool IsWild(const Model& model, std::uint16_t largest) {
  std::uint16_t counts[2] = {};
  std::memcpy(counts, model.bytes.data(), std::min(sizeof counts, model.bytes.size()));
  return counts[0] > largest || counts[1] > largest;
}

struct Both {
  CStreamReader stream;
  Model model;

  // Reads into a value and writes it back, so that what was read is seen, too.
  template <class T>
  void Step(T value, bool isReading) {
    T expected = value;
    if (isReading) {
      stream >> value;
      Read(model, expected);
      fuzz::Check(value == expected, "a value is read as its contract says");
    }
    stream << value;
    Write(model, expected);
  }

  // Texts of the library keep what they had on a count of 0.
  template <class Text>
  void StepOwnText(const std::string& old) {
    Text text;
    text.Append(old.data(), static_cast<unsigned>(old.size()));
    std::string expected = old;
    if (const auto count = model.Number<std::uint16_t>(); count > 0) {
      expected.resize(count);
      model.Take(expected.data(), count);
    }
    stream >> text.value;
    stream << text.value;
    Write(model, expected);
  }
};

struct Buffer {
  CByteBuffer value;
  void Append(const char* bytes, unsigned count) { value.Append(bytes, count); }
};
struct Text {
  CTextString value;
  void Append(const char* bytes, unsigned count) { value.assign(bytes, count); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::uint16_t largest = LargestCount(fuzz::BytesOf(data, size));
  Both both;
  for (int steps = 0; !input.IsEmpty() && steps < kMostSteps && both.model.bytes.size() < kMostBytes;
       ++steps) {
    const unsigned choice = input.Below(24);
    const bool isReading = choice < 12;
    switch (IsWild(both.model, largest) ? 1 : choice % 12) {
      case 0:
        both.Step(input.Number<std::uint8_t>(), isReading);
        break;
      case 1:
        both.Step(input.Number<std::int16_t>(), isReading);
        break;
      case 2:
        both.Step(input.Number<std::uint32_t>(), isReading);
        break;
      case 3:
        both.Step(input.Number<std::int64_t>(), isReading);
        break;
      case 4:
        both.Step(input.Text(255), isReading);
        break;
      case 5:
        both.StepOwnText<Buffer>(input.Text(50));
        break;
      case 6:
        both.StepOwnText<Text>(input.Text(50));
        break;
      case 7:
        both.Step(std::vector<std::int16_t>{1, 2}, isReading);
        break;
      case 8:
        both.Step(std::vector<std::string>{"a", ""}, isReading);
        break;
      case 9:
        both.Step(std::vector<std::vector<std::int32_t>>{{3}}, isReading);
        break;
      case 10:
        both.Step(std::map<std::int32_t, std::int32_t>{{input.Number<std::int8_t>(), 1}}, isReading);
        break;
      default: {
        const std::string raw = input.Text(200);
        both.stream.Write(raw.data(), static_cast<unsigned>(raw.size()));
        both.model.bytes += raw;
      }
    }
    fuzz::Check(std::string_view(reinterpret_cast<const char*>(both.stream.Data()),
                                 static_cast<std::size_t>(both.stream.Length())) == both.model.bytes,
                "the stream holds what was written and not yet read");
  }
  return 0;
}
