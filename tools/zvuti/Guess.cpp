// zvuti guess: lists the records that a file may contain.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "Commands.h"
#include "shared/Files.h"
#include "shared/GbkText.h"
#include "shared/RecordJson.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

using zvuti::RowForm;

constexpr std::size_t kMostNear = 5;  // records listed if none fits

struct Options {
  std::string file;
  bool isHex = false;
};

struct Candidate {
  std::string record;
  std::size_t taken = 0;
  std::size_t rows = 0;
  std::size_t counted = 0;  ///< texts, sequences and maps, whose lengths and counts all fit the bytes
  std::vector<std::string> doubts;
  bool isWhole = false;
};

std::string PlaceAndPath(const char* what, const zvuti::DumpRow& row) {
  return std::string(what) + " in " + row.path;
}

// What a program is unlikely to have written; only the first of each kind.
std::vector<std::string> DoubtsOf(const std::string& record, const zvuti::RecordDump& dump,
                                  std::string_view bytes) {
  std::vector<std::string> doubts;
  bool isTagKnown = true, isTextSound = true, isReservedClear = true;
  for (const zvuti::DumpRow& row : dump.rows) {
    if (isTagKnown && row.isUnknownTag) {
      doubts.push_back(row.value + " in " + row.path);
      isTagKnown = false;
    } else if (isTextSound && row.type.form == RowForm::kText &&
               (FindBroken(row.value) != std::string::npos || row.value.find("\\x") != std::string::npos)) {
      doubts.push_back(PlaceAndPath("bytes that are not text", row));
      isTextSound = false;
    } else if (isReservedClear && row.type.form == RowForm::kReserved &&
               row.value.find_first_not_of("0 ") != std::string::npos) {
      doubts.push_back(PlaceAndPath("reserved bytes that are not zero", row));
      isReservedClear = false;
    }
  }
  if (isTagKnown && !IsAsWritten(record, dump, bytes))
    doubts.emplace_back("encoding it again gives other bytes");
  return doubts;
}

Candidate Try(const std::string& record, const std::string& bytes) {
  zvuti::RecordDump dump;
  zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
  Candidate candidate;
  candidate.record = record;
  candidate.taken = dump.size;
  candidate.rows = dump.rows.size();
  candidate.isWhole = dump.isWhole;
  candidate.counted = static_cast<std::size_t>(
      std::count_if(dump.rows.begin(), dump.rows.end(), [](const zvuti::DumpRow& row) {
        const RowForm form = row.type.form;
        return form == RowForm::kText || form == RowForm::kMap || form == RowForm::kSequence;
      }));
  if (dump.isWhole && dump.size == bytes.size()) candidate.doubts = DoubtsOf(record, dump, bytes);
  return candidate;
}

int PrintFits(std::vector<Candidate>& fits) {
  std::stable_sort(fits.begin(), fits.end(), [](const Candidate& a, const Candidate& b) {
    if (a.doubts.size() != b.doubts.size()) return a.doubts.size() < b.doubts.size();
    return a.counted != b.counted ? a.counted > b.counted : a.rows > b.rows;
  });
  std::size_t width = 6;
  for (const Candidate& fit : fits) width = std::max(width, fit.record.size());
  std::cout << Styled(Style::kDim, Left("record", width) + "  fields  counted  doubts") << '\n';
  for (const Candidate& fit : fits) {
    std::string doubts;
    for (const std::string& doubt : fit.doubts) doubts += (doubts.empty() ? "" : "; ") + doubt;
    std::cout << Styled(Style::kBold, Left(fit.record, width)) << "  " << Right(std::to_string(fit.rows), 6)
              << "  " << Right(std::to_string(fit.counted), 7) << "  " << (doubts.empty() ? "none" : doubts)
              << '\n';
  }
  return kOk;
}

int PrintNear(std::vector<Candidate>& others, const std::string& name, std::size_t size) {
  Say("no record fits the " + Count(size, "byte") + " of " + name + " exactly");
  others.erase(std::remove_if(others.begin(), others.end(),
                              [](const Candidate& c) { return !c.isWhole || c.taken == 0; }),
               others.end());
  std::stable_sort(others.begin(), others.end(),
                   [](const Candidate& a, const Candidate& b) { return a.taken > b.taken; });
  if (others.size() > kMostNear) others.resize(kMostNear);
  for (const Candidate& near : others) {
    std::cout << near.record << " uses " << near.taken << " and leaves " << size - near.taken << '\n';
  }
  return kFound;
}

int Guess(const Options& options) {
  std::string bytes = ReadAll(options.file);
  if (options.isHex) bytes = FromHex(bytes, NameOf(options.file));
  std::vector<Candidate> fits, others;
  for (const std::string& record : zvuti::RecordNames()) {
    Candidate candidate = Try(record, bytes);
    const bool isFit = candidate.isWhole && candidate.taken == bytes.size();
    (isFit ? fits : others).push_back(std::move(candidate));
  }
  return fits.empty() ? PrintNear(others, NameOf(options.file), bytes.size()) : PrintFits(fits);
}

}  // namespace

void AddGuess(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("guess", "list the records that bytes may be");
  command->add_option("FILE", options->file, "the bytes; default is standard input")->type_name("");
  command->add_flag("--hex", options->isHex, "the input is hexadecimal text");
  command->footer(
      "Lists the records that fit the bytes exactly. Those with the fewest doubts come first, and among\n"
      "them those with the most texts, sequences and maps. If no record fits, lists those that fit the\n"
      "start of the bytes, and exits with 1.\n\n"
      "  zvuti guess inbox/reward.bin");
  command->callback([options, &exitCode] { exitCode = Guess(*options); });
}

}  // namespace tool
