#include "decode/Messages.h"

#include <charconv>
#include <cstdint>
#include <utility>

#include "input/ByteReader.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kMostMessages = 1'000'000;

class Reader {
 public:
  Reader(std::string_view bytes, Messages& messages) : bytes_(bytes), messages_(messages) {}

  // Returns false after the first message that is not whole.
  bool Take(const std::vector<Part>& parts) {
    for (const Part& part : parts) {
      for (std::size_t i = 0; part.isToEnd ? messages_.size < bytes_.size() : i < part.times; ++i) {
        const std::size_t before = messages_.size;
        const bool isWhole = part.kind == Part::Kind::kGroup    ? Take(part.group)
                             : part.kind == Part::Kind::kRecord ? TakeRecord(part)
                                                                : TakeInteger(part);
        if (!isWhole) return false;
        if (part.isToEnd && messages_.size == before)
          throw Failure(part.name + " may have no bytes, so that it cannot be repeated to the end");
      }
    }
    return true;
  }

 private:
  Message& Add(const Part& part) {
    if (messages_.all.size() == kMostMessages)
      throw Failure("there are more than " + std::to_string(kMostMessages) + " messages; use --skip");
    Message& message = messages_.all.emplace_back();
    message.name = part.name;
    message.isRecord = part.kind == Part::Kind::kRecord;
    message.offset = messages_.size;
    return message;
  }

  bool TakeRecord(const Part& part) {
    Message& message = Add(part);
    const std::string_view rest = bytes_.substr(messages_.size);
    zvuti::DumpRecord(part.name, rest.data(), rest.size(), message.dump);
    messages_.size += message.dump.size;
    if (message.dump.isWhole) return true;
    const std::string place = messages_.isLone
                                  ? ""
                                  : " [" + std::to_string(messages_.all.size() - 1) +
                                        "], which starts at offset " + std::to_string(message.offset) + ",";
    messages_.problem = part.name + place + " is incomplete: " + message.dump.problem;
    return false;
  }

  bool TakeInteger(const Part& part) {
    if (bytes_.size() - messages_.size < part.bytes) {
      messages_.problem = "the bytes end in " + part.name + " [" + std::to_string(messages_.all.size()) +
                          "] at offset " + std::to_string(messages_.size) + ": " +
                          std::to_string(part.bytes) + " needed, " +
                          std::to_string(bytes_.size() - messages_.size) + " left";
      return false;
    }
    Message& message = Add(part);
    const ByteReader reader(bytes_, part.isBigEndian);
    const std::uint64_t value = reader.Read(messages_.size, part.bytes);
    const unsigned unused = (64 - 8 * part.bytes) % 64;
    zvuti::DumpRow row;
    row.size = part.bytes;
    row.type.bits = static_cast<std::uint16_t>(8 * part.bytes);
    row.type.isSigned = part.isSigned;
    row.value = part.isSigned ? std::to_string(static_cast<std::int64_t>(value << unused) >> unused)
                              : std::to_string(value);
    message.dump.rows.push_back(std::move(row));
    message.dump.size = part.bytes;
    message.dump.isWhole = true;
    messages_.size += part.bytes;
    return true;
  }

  std::string_view bytes_;
  Messages& messages_;
};

// Writes the messages of an array, item by item.
class Writer {
 public:
  explicit Writer(const Json& json) : json_(json) {}

  void Put(const std::vector<Part>& parts) {
    for (const Part& part : parts) {
      for (std::size_t i = 0; part.isToEnd ? next_ < json_.size() : i < part.times; ++i) {
        if (part.kind == Part::Kind::kGroup) {
          Put(part.group);
          continue;
        }
        if (next_ == json_.size())
          throw Failure("the array ends where " + part.name + " " + PathOf(next_) + " is needed");
        const Json& item = json_[next_];
        try {
          if (part.kind == Part::Kind::kRecord) {
            bytes_ += ToBytes(part.name, item);
          } else {
            PutInteger(part, item);
          }
        } catch (const Failure& e) {
          throw Failure(PathOf(next_) + ": " + e.what());
        }
        ++next_;
      }
    }
  }

  std::string Finish() {
    if (next_ < json_.size()) {
      throw Failure("the layout ends before " + PathOf(next_) + " of " + Count(json_.size(), "message"));
    }
    return std::move(bytes_);
  }

 private:
  template <class T>
  static bool Parse(const std::string& text, T& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
  }

  void PutInteger(const Part& part, const Json& item) {
    const std::string text = item.is_string() ? item.get<std::string>() : item.dump();
    std::int64_t number = 0;
    std::uint64_t value = 0;
    const unsigned unused = 64 - 8 * part.bytes;
    bool fits = false;
    if (part.isSigned) {
      fits = Parse(text, number) && number >= INT64_MIN >> unused && number <= INT64_MAX >> unused;
      value = static_cast<std::uint64_t>(number);
    } else {
      fits = Parse(text, value) && value <= UINT64_MAX >> unused;
    }
    if (!fits) throw Failure("not a number that " + part.name + " can hold");
    for (unsigned i = 0; i < part.bytes; ++i) {
      const unsigned place = part.isBigEndian ? part.bytes - 1 - i : i;
      bytes_ += static_cast<char>(value >> (8 * place));
    }
  }

  const Json& json_;
  std::size_t next_ = 0;
  std::string bytes_;
};

}  // namespace

std::string PathOf(std::size_t index) { return std::string("[").append(std::to_string(index)).append("]"); }

Messages ReadMessages(const Layout& layout, std::string_view bytes) {
  Messages messages;
  messages.isLone = !layout.lone.empty();
  Reader(bytes, messages).Take(layout.parts);
  return messages;
}

std::vector<zvuti::DumpRow> RowsOf(const Messages& messages) {
  std::vector<zvuti::DumpRow> rows;
  for (std::size_t i = 0; i < messages.all.size(); ++i) {
    const Message& message = messages.all[i];
    const std::string prefix = messages.isLone ? "" : PathOf(i) + (message.isRecord ? "." : "");
    for (zvuti::DumpRow row : message.dump.rows) {
      row.path.insert(0, prefix);
      row.offset += message.offset;
      rows.push_back(std::move(row));
    }
  }
  return rows;
}

Json ToJson(const Messages& messages) {
  if (messages.isLone) return ToJson(messages.all[0].name, messages.all[0].dump);
  Json json = Json::array();
  for (const Message& message : messages.all) {
    json.push_back(message.isRecord ? ToJson(message.name, message.dump)
                                    : Json::parse(message.dump.rows[0].value));
  }
  return json;
}

std::string ToBytes(const Layout& layout, const Json& json) {
  if (!layout.lone.empty()) return ToBytes(layout.lone, json);
  if (!json.is_array()) throw Failure("an array of messages is needed");
  Writer writer(json);
  writer.Put(layout.parts);
  return writer.Finish();
}

}  // namespace tool
