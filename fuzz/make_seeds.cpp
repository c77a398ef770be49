// make_seeds FOLDER: writes a seed for each golden record and each fuzz target of records to FOLDER/TARGET.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "records/Units.h"
#include "tests/support/GoldenRecords.h"

int main(int count, char** arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: make_seeds FOLDER\n");
    return 1;
  }
  const auto& types = zvuti::wire::AllRecords();
  const std::filesystem::path folder = arguments[1];
  const auto write = [&](const char* target, const std::string& name, const std::string& bytes) {
    std::filesystem::create_directories(folder / target);
    std::ofstream(folder / target / name, std::ios::binary) << bytes;
  };
  for (const test::Golden& golden : test::GoldenRecords()) {
    const auto* type = zvuti::wire::FindRecord(golden.record);
    const auto index = std::find(types.begin(), types.end(), type) - types.begin();
    const std::string name = golden.record + "_" + golden.kind;
    const std::string plain(1, static_cast<char>(index)), other(1, static_cast<char>(index | 0x80));
    std::string lines;
    for (const test::GoldenRow& row : golden.rows) lines += row.path + "=" + row.value + "\n";
    write("records", name, plain + golden.Bytes());
    write("records", name + "_over", other + golden.Bytes());
    write("dump", name, plain + golden.Bytes());
    write("fill", name, plain + lines);
  }
  return 0;
}
