// Key-value texts: the parser with all its options, the dictionary, and the text form of counters.
//
// Input: one byte of options, whose highest bit selects the next two bytes as separators; two bytes of
// separators; a text.
#include <map>
#include <string>

#include <ZvUtiLib/data/CByteBuffer.h>
#include <ZvUtiLib/records/Daily.h>

#include "fuzz/Input.h"
#include "tests/support/PlainDict.h"
#include "tests/support/SteppedParser.h"

namespace {

// Longer texts have hundreds of pairs; some of them will do.
constexpr std::size_t kMostBytes = 1'000;

class Recorder : public CStringDict {
 public:
  void SetValue(const CTextString& key, const char* value) override {
    ((got += key.c_str()) += '>') += value;
    got += ';';
    model[key.c_str()] = value;
    CStringDict::SetValue(key, value);
  }
  std::string got;
  std::map<std::string, std::string> model;
};

void CheckCounters(const std::string& text) {
  CUtiCounterTable table, again;
  table.LoadFromText(text.c_str());
  CByteBuffer asText;
  table.AppendAsText(asText);
  asText.Append("", 1);
  again.LoadFromText(reinterpret_cast<const char*>(asText.Data()));
  fuzz::Check(again.Counters == table.Counters, "counters converted to text are read back unchanged");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3 || (size > kMostBytes && !fuzz::IsChosen(fuzz::BytesOf(data, size), 8))) return 0;
  const unsigned options = data[0] & 7;
  std::string separators = "=&";
  if (data[0] >= 0x80 && data[1] != 0 && data[2] != 0) separators.assign(data + 1, data + 3);
  const std::string all(fuzz::BytesOf(data + 3, size - 3));
  const std::string text = all.substr(0, all.find('\0'));

  Recorder recorder;
  zvuti::ParseKeyValues(recorder, all.c_str(), separators.c_str(), -1, options);
  fuzz::Check(recorder.got == test::ParsedInSteps(options, text, separators),
              "the parser finds the same pairs as the reference parser");
  fuzz::Check(test::PairsOf(recorder) == test::Ordered(recorder.model),
              "pairs are visited in the expected order");

  const std::string half = text.substr(0, text.size() / 2);
  Recorder cut;
  zvuti::ParseKeyValues(cut, all.c_str(), separators.c_str(), static_cast<int>(half.size()), options);
  fuzz::Check(cut.got == test::ParsedInSteps(options, half, separators),
              "the length argument limits the text");

  CStringDict dict;
  dict.Parse(all.c_str(), separators.c_str());
  CheckCounters(text);
  return 0;
}
