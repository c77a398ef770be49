// msgpack-cxx. Each record is an array of its fields.
#include <msgpack.hpp>
#include <string_view>

#include "benchmarks/records/Codec.h"

MSGPACK_ADD_ENUM(StatusKind)

namespace msgpack {
MSGPACK_API_VERSION_NAMESPACE(MSGPACK_DEFAULT_API_NS) {
  namespace adaptor {

  template <bench::Record T>
  struct pack<T> {
    template <class Stream>
    packer<Stream>& operator()(packer<Stream>& out, const T& record) const {
      std::apply(
          [&](auto&... fields) {
            out.pack_array(sizeof...(fields));
            (out.pack(fields), ...);
          },
          bench::Fields(const_cast<T&>(record)));
      return out;
    }
  };

  template <bench::Record T>
  struct convert<T> {
    const msgpack::object& operator()(const msgpack::object& from, T& record) const {
      std::apply(
          [&](auto&... fields) {
            if (from.type != msgpack::type::ARRAY || from.via.array.size != sizeof...(fields))
              throw msgpack::type_error();
            const msgpack::object* next = from.via.array.ptr;
            ((next++)->convert(fields), ...);
          },
          bench::Fields(record));
      return from;
    }
  };

  }  // namespace adaptor
}
}  // namespace msgpack

namespace bench {
namespace {

struct Msgpack {
  static constexpr const char* kName = "msgpack";

  template <class T>
  static const T& Prepare(const T& value) {
    return value;
  }
  template <class T>
  static msgpack::sbuffer Encode(const T& value) {
    msgpack::sbuffer out;
    msgpack::pack(out, value);
    return out;
  }
  template <class T>
  static T Decode(std::string_view bytes) {
    const msgpack::object_handle handle = msgpack::unpack(bytes.data(), bytes.size());
    T value;
    handle->convert(value);
    return value;
  }
  template <class T>
  static const T& ToValue(const T& decoded) {
    return decoded;
  }
  static std::string_view ViewOf(const std::string& bytes) { return bytes; }
  static std::string_view ViewOf(const msgpack::sbuffer& out) { return {out.data(), out.size()}; }
};

const bool kRegistered = (RegisterCodec<Msgpack>(), true);

}  // namespace
}  // namespace bench
