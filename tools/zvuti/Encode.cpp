// zvuti encode: makes the bytes of a record from JSON.
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "Commands.h"
#include "decode/Layout.h"
#include "decode/Messages.h"
#include "shared/Files.h"
#include "shared/RecordJson.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

struct Options {
  std::string layout, file, out;
  bool isHex = false;
};

constexpr int kMostDepth = 64;  // of nested JSON; no record comes close to it

// Parses JSON. Refuses an object with two members of one name, of which the parser would silently keep one.
Json ParseJson(const std::string& text) {
  std::vector<std::set<std::string>> open;  // the names seen so far in each open object
  return Json::parse(text, [&](int depth, Json::parse_event_t event, const Json& parsed) {
    if (depth > kMostDepth) throw Failure("nested more than " + std::to_string(kMostDepth) + " levels deep");
    if (event == Json::parse_event_t::object_start) open.emplace_back();
    if (event == Json::parse_event_t::object_end) open.pop_back();
    if (event == Json::parse_event_t::key && !open.back().insert(parsed.get<std::string>()).second) {
      throw Failure(parsed.dump() + " occurs twice in one object");
    }
    return true;
  });
}

int Encode(const Options& options) {
  const Layout layout = ParseLayout(options.layout);
  if (options.out.empty() && !options.isHex && IsOutputTerminal()) {
    throw Failure("binary data is not written to a terminal; use --hex or -o FILE");
  }
  Json json;
  try {
    json = ParseJson(ReadAll(options.file));
  } catch (const Json::exception& e) {
    const std::string what = e.what();  // "[json.exception.parse_error.101] parse error at line 1, ..."
    const std::size_t close = what.find("] ");
    throw Failure(NameOf(options.file) + ": " + (close == what.npos ? what : what.substr(close + 2)));
  }
  const std::string bytes = ToBytes(layout, json);
  WriteAll(options.out, options.isHex ? ToHex(bytes) + "\n" : bytes);
  return kOk;
}

}  // namespace

void AddEncode(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("encode", "make the bytes of a record from JSON");
  command
      ->add_option("RECORD", options->layout,
                   "name of the record, see 'zvuti records', or a layout as for 'zvuti decode'")
      ->required()
      ->type_name("");
  command->add_option("FILE", options->file, "the JSON; default is standard input")->type_name("");
  command->add_flag("--hex", options->isHex, "write hexadecimal text");
  command->add_option("-o,--output", options->out, "write to FILE instead of standard output")
      ->type_name("FILE");
  command->footer(
      "The JSON has the form that 'zvuti decode --json' prints. A missing field gets its default value; a\n"
      "value that does not fit its field is an error.\n"
      "A packed time may be \"2013-08-29 12:34:56\" or a number; of a layout, the JSON is an array.\n"
      "A number may also be a string: \"0x3B9ACA00\". In a text, \\x and two digits stand for a byte\n"
      "(in JSON \"\\\\x01\"), and two backslashes for one.\n\n"
      "  zvuti decode ItemRecord item.bin --json | sed 's/\"Count\": 1/\"Count\": 2/' |\n"
      "    zvuti encode ItemRecord -o item2.bin\n"
      "  echo '{\"ItemId\": 7101}' | zvuti encode ItemRecord --hex");
  command->callback([options, &exitCode] { exitCode = Encode(*options); });
}

}  // namespace tool
