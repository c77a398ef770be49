// The plain XML reader beside the builder: whatever it accepts is well-formed, and both make the same tree of
// it. The first byte of an input chooses the encoding, whether the rest is a document or makes one, and how
// many bytes of one that was made are changed then.
#include <vector>

#include "fuzz/Check.h"
#include "fuzz/PlainDocuments.h"

namespace {

using zvuti::xml::Encoding;

void Compare(std::string_view document, Encoding encoding) {
  const std::string result = fuzz::CompareReaders(document, encoding);
  if (!result.empty() && result != "same") fuzz::Check(false, ("the readers agree: " + result).c_str());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const unsigned mode = data[0] % 4;
  const std::string_view rest = fuzz::BytesOf(data, size).substr(1);
  std::size_t at = 0;
  // At the end of the input all choices are 0, which ends the document.
  const auto below = [&](std::size_t n) {
    return at < rest.size() ? static_cast<unsigned char>(rest[at++]) % static_cast<unsigned>(n) : 0u;
  };
  if (mode == 0) Compare(rest, Encoding::kGbk);
  if (mode == 1) Compare(rest, Encoding::kUtf8);
  if (mode < 2) return 0;
  struct Change {
    std::size_t where;
    unsigned kind;
    char byte;
  };
  std::vector<Change> changes(data[0] / 4 % 4);
  for (Change& change : changes)
    change = {below(256) * 256u + below(256), below(3), static_cast<char>(below(256))};
  std::string made = fuzz::MakeDocument(below);
  for (const Change& change : changes) {
    const std::size_t where = change.where % (made.size() + 1);
    made.replace(where, change.kind == 0 ? 0 : 1, change.kind == 2 ? 0 : 1, change.byte);
  }
  mode == 2 ? Compare(made, Encoding::kGbk) : Compare(zvuti::gbk::ToUtf8(made), Encoding::kUtf8);
  return 0;
}
