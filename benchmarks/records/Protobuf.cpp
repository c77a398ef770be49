// protobuf. Messages are filled and read through reflection, which is not measured.
#include <records/Messages.pb.h>

#include <string_view>

#include "benchmarks/records/Codec.h"

namespace bench {
namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

// Copies the fields of a record to a message, or back if kIsRead. Both have their fields in the same order.
template <bool kIsRead>
struct Carrier {
  Message& message;

  const google::protobuf::Reflection& By() const { return *message.GetReflection(); }

  template <class T>
  static void Record(Message& message, T& record) {
    Carrier carrier{message};
    int index = 0;
    std::apply(
        [&](auto&... fields) { (carrier.Field(*message.GetDescriptor()->field(index++), fields), ...); },
        Fields(record));
  }
  // Copies the only field of a message that merely wraps a list.
  template <class T>
  static void Wrapped(Message& message, T& field) {
    Carrier{message}.Field(*message.GetDescriptor()->field(0), field);
  }

  template <class T>
  void Number(const FieldDescriptor& at, T& field) const {
    if constexpr (kIsRead) {
      switch (at.cpp_type()) {
        case FieldDescriptor::CPPTYPE_INT32:
          field = static_cast<T>(By().GetInt32(message, &at));
          break;
        case FieldDescriptor::CPPTYPE_UINT32:
          field = static_cast<T>(By().GetUInt32(message, &at));
          break;
        default:
          field = static_cast<T>(By().GetInt64(message, &at));
          break;
      }
    } else {
      switch (at.cpp_type()) {
        case FieldDescriptor::CPPTYPE_INT32:
          By().SetInt32(&message, &at, static_cast<int>(field));
          break;
        case FieldDescriptor::CPPTYPE_UINT32:
          By().SetUInt32(&message, &at, static_cast<unsigned>(field));
          break;
        default:
          By().SetInt64(&message, &at, static_cast<std::int64_t>(field));
          break;
      }
    }
  }

  template <class T>
  void Field(const FieldDescriptor& at, T& field) const {
    if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
      Number(at, field);
    } else if constexpr (std::is_same_v<T, std::string>) {
      if constexpr (kIsRead) {
        field = By().GetString(message, &at);
      } else {
        By().SetString(&message, &at, field);
      }
    } else if constexpr (bench::Record<T>) {
      Record(*By().MutableMessage(&message, &at), field);
    } else if constexpr (kIsRead) {
      field.clear();
      for (int i = 0; i < By().FieldSize(message, &at); ++i) TakeElement(at, i, field);
    } else {
      for (auto& element : field) AddElement(at, element);
    }
  }

  template <class Element>
  void AddElement(const FieldDescriptor& at, Element& element) const {
    if constexpr (std::is_same_v<Element, std::string>) {
      By().AddString(&message, &at, element);
    } else if constexpr (std::is_same_v<Element, std::uint32_t>) {
      By().AddUInt32(&message, &at, element);
    } else {
      Entry(*By().AddMessage(&message, &at), element);
    }
  }

  template <class List>
  void TakeElement(const FieldDescriptor& at, int i, List& list) const {
    if constexpr (requires { typename List::mapped_type; }) {
      std::pair<typename List::key_type, typename List::mapped_type> entry{};
      Entry(*By().MutableRepeatedMessage(&message, &at, i), entry);
      list.insert(std::move(entry));
    } else if constexpr (std::is_same_v<typename List::value_type, std::string>) {
      list.push_back(By().GetRepeatedString(message, &at, i));
    } else if constexpr (std::is_same_v<typename List::value_type, std::uint32_t>) {
      list.push_back(By().GetRepeatedUInt32(message, &at, i));
    } else {
      list.emplace_back();
      Record(*By().MutableRepeatedMessage(&message, &at, i), list.back());
    }
  }

  template <class Element>
  static void Entry(Message& message, Element& element) {
    if constexpr (bench::Record<Element>) {
      Record(message, element);
    } else {
      Carrier carrier{message};
      const auto& type = *message.GetDescriptor();
      carrier.Number(*type.field(0),
                     const_cast<std::remove_const_t<decltype(element.first)>&>(element.first));
      if constexpr (requires { element.second.push_back(0u); }) {
        Wrapped(*carrier.By().MutableMessage(&message, type.field(1)), element.second);
      } else {
        carrier.Field(*type.field(1), element.second);
      }
    }
  }

  template <class T>
  static void Whole(Message& message, T& value) {
    if constexpr (bench::Record<T>) {
      Record(message, value);
    } else {
      Wrapped(message, value);
    }
  }
};

// The message type for a value type.
template <class T>
struct MessageFor;
template <>
struct MessageFor<Items> {
  using Type = messages::Items;
};
template <>
struct MessageFor<PlayerSnapshot> {
  using Type = messages::Snapshot;
};
template <>
struct MessageFor<AccountRecord> {
  using Type = messages::Account;
};
template <>
struct MessageFor<BundleTable> {
  using Type = messages::BundleTable;
};

struct Protobuf {
  static constexpr const char* kName = "protobuf";

  template <class T>
  static auto Prepare(const T& value) {
    typename MessageFor<T>::Type message;
    Carrier<false>::Whole(message, const_cast<T&>(value));
    return message;
  }
  static std::string Encode(const Message& message) { return message.SerializeAsString(); }
  template <class T>
  static auto Decode(std::string_view bytes) {
    typename MessageFor<T>::Type message;
    message.ParseFromArray(bytes.data(), static_cast<int>(bytes.size()));
    return message;
  }
  template <class T, class Decoded>
  static T ToValue(Decoded decoded) {
    T value;
    Carrier<true>::Whole(decoded, value);
    return value;
  }
  static std::string_view ViewOf(const std::string& bytes) { return bytes; }
};

const bool kRegistered = (RegisterCodec<Protobuf>(), true);

}  // namespace
}  // namespace bench
