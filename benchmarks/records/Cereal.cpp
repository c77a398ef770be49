// cereal's binary archive.
#include <cereal/archives/binary.hpp>
#include <cereal/types/map.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#include <sstream>
#include <streambuf>
#include <string_view>

#include "benchmarks/records/Codec.h"

namespace cereal {

template <class Archive, bench::Record T>
void serialize(Archive& archive, T& record) {
  std::apply([&](auto&... fields) { archive(fields...); }, bench::Fields(record));
}

}  // namespace cereal

namespace bench {
namespace {

// Reads the bytes in place; std::istringstream would copy them first.
struct BytesBuffer : std::streambuf {
  explicit BytesBuffer(std::string_view bytes) {
    char* begin = const_cast<char*>(bytes.data());
    setg(begin, begin, begin + bytes.size());
  }
};

struct Cereal {
  static constexpr const char* kName = "cereal";

  template <class T>
  static const T& Prepare(const T& value) {
    return value;
  }
  template <class T>
  static std::ostringstream Encode(const T& value) {
    std::ostringstream out;
    cereal::BinaryOutputArchive archive(out);
    archive(value);
    return out;
  }
  template <class T>
  static T Decode(std::string_view bytes) {
    BytesBuffer buffer(bytes);
    std::istream in(&buffer);
    T value;
    cereal::BinaryInputArchive archive(in);
    archive(value);
    return value;
  }
  template <class T>
  static const T& ToValue(const T& decoded) {
    return decoded;
  }
  static std::string_view ViewOf(const std::string& bytes) { return bytes; }
  static std::string_view ViewOf(const std::ostringstream& out) { return out.view(); }
};

const bool kRegistered = (RegisterCodec<Cereal>(), true);

}  // namespace
}  // namespace bench
