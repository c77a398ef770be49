// Changes inputs of the targets that read records row by row: numbers, texts, tags, elements with their
// counts. The first byte of an input picks the record. Rows come from the library's own description.
#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "fuzz/Mutator.h"
#include "records/Units.h"

namespace {

using zvuti::DumpRow;
using zvuti::RowForm;

// Longer records are changed as bytes, because describing them takes longer than reading them.
constexpr std::size_t kMostBytes = 1'500;

class Mutation {
 public:
  Mutation(std::string& bytes, std::string record, unsigned seed)
      : bytes_(bytes), record_(std::move(record)), random_(seed) {
    zvuti::DumpRecord(record_, bytes_.data(), bytes_.size(), dump_);
  }

  void Run() {
    if (dump_.rows.empty() || Below(16) == 0) return Complete();
    const std::size_t picked = Below(dump_.rows.size());
    const DumpRow& row = dump_.rows[picked];
    const RowForm form = row.type.form;
    const unsigned choice = Below(16);
    if (choice == 0) return bytes_.resize(row.offset + Below(row.size + 1));  // cut short
    if (choice == 1 && !dump_.isWhole) return Complete();
    if (form == RowForm::kText) return ChangeText(row);
    if (form == RowForm::kSequence || form == RowForm::kMap) return ChangeElements(picked);
    if (form == RowForm::kTag && Below(4) != 0) return ChangeTag(picked);
    ChangeNumber(row.offset, row.size);
  }

 private:
  std::uint32_t Below(std::size_t end) {
    return static_cast<std::uint32_t>(random_() % std::max<std::size_t>(end, 1));
  }

  void Put(std::size_t at, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size && at + i < bytes_.size(); ++i, value >>= 8)
      bytes_[at + i] = static_cast<char>(value);
  }
  std::uint32_t CountAt(const DumpRow& row) const {
    std::uint32_t count = 0;
    for (std::size_t i = row.size; i-- > 0;)
      count = count << 8 | static_cast<unsigned char>(bytes_[row.offset + i]);
    return count;
  }

  void ChangeNumber(std::size_t at, std::size_t size) {
    static constexpr std::uint64_t kEdges[] = {
        0, 1, 2, 255, 256, 999'999'999, 1'000'000'000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, ~0ULL, 1ULL << 63};
    const auto kind = Below(4);
    if (kind == 0 && at < bytes_.size()) {
      bytes_[at] = static_cast<char>(bytes_[at] + (Below(2) != 0 ? 1 : -1));
    } else {
      Put(at, kind == 1 ? random_() * 0x9E3779B97F4A7C15ULL : kEdges[Below(std::size(kEdges))], size);
    }
  }

  // Gives a text another length, with the bytes for it.
  void ChangeText(const DumpRow& row) {
    static constexpr std::size_t kLengths[] = {0, 1, 2, 15, 16, 31, 32, 64, 255, 256};
    const std::size_t length = Below(2) != 0 ? kLengths[Below(std::size(kLengths))] : Below(24);
    const char filler = "a0\x81\x00\n\\\xFF\xD6"[Below(8)];
    bytes_.replace(row.offset + 2, row.size - 2, std::string(length, filler));
    Put(row.offset, length, 2);
  }

  std::string DefaultElement(const zvuti::RowType& type) const {
    if (type.element == RowForm::kInteger) return std::string(8, '\0');
    if (type.element == RowForm::kText) return std::string(2, '\0');
    std::string bytes, problem;
    zvuti::FillRecord(std::string(type.name), {}, bytes, problem);
    return bytes;
  }

  // Repeats, inserts or removes elements of a sequence or map, with its count or against it.
  void ChangeElements(std::size_t counted) {
    const DumpRow& row = dump_.rows[counted];
    std::vector<std::pair<std::size_t, std::size_t>> elements;  // offset and size
    const std::string prefix = row.path + "[";
    std::string last;
    for (std::size_t i = counted + 1; i < dump_.rows.size(); ++i) {
      const DumpRow& inner = dump_.rows[i];
      if (inner.path.compare(0, prefix.size(), prefix) != 0) break;
      const std::string element = inner.path.substr(0, inner.path.find(']', prefix.size()));
      if (element != last) elements.emplace_back(inner.offset, 0);
      elements.back().second = inner.offset + inner.size - elements.back().first;
      last = element;
    }
    const unsigned choice = Below(8);
    if (choice == 0) return ChangeNumber(row.offset, Below(4) == 0 ? row.size : 1);
    const auto [at, size] =
        elements.empty() ? std::pair(row.offset, row.size) : elements[Below(elements.size())];
    const std::uint32_t count = CountAt(row);
    if (choice == 1 && !elements.empty()) {
      bytes_.erase(at, size);
      return Put(row.offset, count - 1, row.size);
    }
    const std::string element =
        elements.empty() || choice == 2 ? DefaultElement(row.type) : bytes_.substr(at, size);
    const std::size_t place = choice < 5 ? row.offset + row.size : at + size;
    const unsigned times = Below(8) == 0 ? Below(40) : 1;
    for (unsigned i = 0; i < times; ++i) bytes_.insert(place, element);
    Put(row.offset, count + times, row.size);
  }

  void Fill(const std::vector<zvuti::NamedValue>& values) {
    std::string filled, problem;
    if (zvuti::FillRecord(record_, values, filled, problem)) bytes_ = filled + bytes_.substr(dump_.size);
  }
  std::vector<zvuti::NamedValue> Values() const {
    std::vector<zvuti::NamedValue> values;
    for (const DumpRow& row : dump_.rows) values.push_back({row.path, row.value});
    return values;
  }
  void ChangeTag(std::size_t picked) {
    auto values = Values();
    const DumpRow& row = dump_.rows[picked];
    values[picked].value = std::string(row.type.name) + std::to_string(Below(12));
    Fill(values);
  }
  // Default values for the rows that are missing.
  void Complete() { Fill(Below(4) == 0 ? std::vector<zvuti::NamedValue>() : Values()); }

  std::string& bytes_;
  std::string record_;
  zvuti::RecordDump dump_;
  std::minstd_rand random_;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most,
                                               unsigned seed) {
  if (size < 2 || size > kMostBytes || seed % 4 == 0) return LLVMFuzzerMutate(data, size, most);
  const auto& types = zvuti::wire::AllRecords();
  std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  Mutation(bytes, types[(data[0] & 0x7F) % types.size()]->name, seed / 4).Run();
  return fuzz::PutMutated(bytes, data, 1, most);
}
