// Key-value texts: the parser with all its options, the dictionary behind it, and the counters' text form.
// The first byte has the options and says whether the next two are the separators; a text follows.
#include <map>
#include <string>

#include <ZvUtiLib/data/CByteBuffer.h>
#include <ZvUtiLib/records/Daily.h>

#include "fuzz/Check.h"
#include "tests/support/PlainDict.h"
#include "tests/support/SteppedParser.h"

namespace {

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
  fuzz::Check(again.Counters == table.Counters, "counters come back from their text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  const unsigned options = data[0] & 7;
  std::string separators = "=&";
  if (data[0] >= 0x80 && data[1] != 0 && data[2] != 0) separators.assign(data + 1, data + 3);
  const std::string all(fuzz::BytesOf(data + 3, size - 3));
  const std::string text = all.substr(0, all.find('\0'));

  Recorder recorder;
  zvuti::ParseKeyValues(recorder, all.c_str(), separators.c_str(), -1, options);
  fuzz::Check(recorder.got == test::ParsedInSteps(options, text, separators), "pairs are cut as in steps");
  fuzz::Check(test::PairsOf(recorder) == test::Ordered(recorder.model), "pairs are visited in their order");

  const std::string half = text.substr(0, text.size() / 2);
  Recorder cut;
  zvuti::ParseKeyValues(cut, all.c_str(), separators.c_str(), static_cast<int>(half.size()), options);
  fuzz::Check(cut.got == test::ParsedInSteps(options, half, separators), "a length bounds the text");

  CStringDict dict;
  dict.Parse(all.c_str(), separators.c_str());
  CheckCounters(text);
  return 0;
}
