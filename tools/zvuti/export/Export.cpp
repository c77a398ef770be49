// zvuti export: writes the wire format for other programs.
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "Commands.h"
#include "export/Formats.h"
#include "shared/Files.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

int ExportKaitai(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw Failure(folder + ": cannot be made: " + error.message());
  for (const auto& [name, content] : KaitaiDescriptions()) {
    const std::filesystem::path path = std::filesystem::path(folder) / name;
    ReplaceFile(path.string(), content);
  }
  return kOk;
}

}  // namespace

void AddExport(CLI::App& program, int& exitCode) {
  auto path = std::make_shared<std::string>();
  CLI::App* command =
      program.add_subcommand("export", "write the wire format for Wireshark or Kaitai Struct");
  command->require_subcommand(1);
  command->footer(
      "Both know every record, with the names of its fields, and come from the rows that 'zvuti records'\n"
      "lists.\n\n"
      "  zvuti export wireshark -o ~/.local/lib/wireshark/plugins/zvutilib.lua\n"
      "  zvuti export kaitai descriptions");

  CLI::App* wireshark = command->add_subcommand("wireshark", "a plugin in Lua that shows records in packets");
  wireshark->add_option("-o,--output", *path, "write to FILE instead of standard output")->type_name("FILE");
  wireshark->footer(
      "Each record is a protocol: zvuti_itemrecord for ItemRecord. Give it ports in its preferences, or\n"
      "pick it with \"Decode As\". A TCP stream is one record after the other; a record may cross "
      "packets.\n\n"
      "  tshark -X lua_script:zvutilib.lua -d tcp.port==7000,zvuti_itemrecord -V -r capture.pcap");
  wireshark->callback([path, &exitCode] {
    ReplaceFile(*path, WiresharkDissector());
    exitCode = kOk;
  });

  CLI::App* kaitai = command->add_subcommand("kaitai", "a description in Kaitai Struct of each record");
  kaitai->add_option("DIR", *path, "the folder for the .ksy files; it is made if missing")
      ->required()
      ->type_name("");
  kaitai->footer(
      "The Kaitai Struct compiler makes parsers for a dozen languages from them.\n\n"
      "  zvuti export kaitai descriptions");
  kaitai->callback([path, &exitCode] { exitCode = ExportKaitai(*path); });
}

}  // namespace tool
