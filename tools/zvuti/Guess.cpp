// zvuti guess: lists the records that a file may contain.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "Commands.h"
#include "guess/Doubts.h"
#include "guess/Scan.h"
#include "input/Input.h"
#include "shared/Files.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

using zvuti::RowForm;

constexpr std::size_t kMostNear = 5;  // records listed if none fits

struct Options {
  Input input;
  bool isScan = false;
  std::size_t most = 20;
};

struct Candidate {
  std::string record;
  std::size_t taken = 0;
  std::size_t rows = 0;
  std::size_t counted = 0;  ///< texts, sequences and maps, whose lengths and counts all fit the bytes
  std::vector<std::string> doubts;
  bool isWhole = false;
};

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

int PrintHits(const std::string& bytes, const Options& options) {
  ScanLimits limits;
  const std::vector<Hit> hits = Scan(bytes, limits);
  if (limits.isCut) Say("some records may be missing: too many fit, or start and do not end");
  if (hits.empty()) {
    Say("no record with texts, lists or tags is recognised in the " + Count(bytes.size(), "byte") + " of " +
        NameOf(options.input.file));
    return kFound;
  }
  std::cout << Styled(Style::kDim, "  offset    bytes  evidence  record") << '\n';
  for (const Hit& hit : Best(hits, options.most)) {
    std::cout << Right(std::to_string(hit.offset), 8) << "  " << Right(std::to_string(hit.size), 7) << "  "
              << Right(std::to_string(hit.evidence), 8);
    for (const std::string& record : hit.records)
      std::cout << (&record == hit.records.data() ? "  " : " or ") << Styled(Style::kBold, record);
    std::cout << '\n';
  }
  if (hits.size() > options.most) std::cout << "\n" << hits.size() - options.most << " more\n";
  return kOk;
}

int Guess(const Options& options) {
  const std::string bytes = ReadBytes(options.input);
  if (options.isScan) return PrintHits(bytes, options);
  std::vector<Candidate> fits, others;
  for (const std::string& record : zvuti::RecordNames()) {
    Candidate candidate = Try(record, bytes);
    const bool isFit = candidate.isWhole && candidate.taken == bytes.size();
    (isFit ? fits : others).push_back(std::move(candidate));
  }
  return fits.empty() ? PrintNear(others, NameOf(options.input.file), bytes.size()) : PrintFits(fits);
}

}  // namespace

void AddGuess(CLI::App& program, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command = program.add_subcommand("guess", "list the records that bytes may be");
  command->add_option("FILE", options->input.file, "the bytes; default is standard input")->type_name("");
  AddInputOptions(*command, options->input);
  CLI::Option* scan = command->add_flag("--scan", options->isScan,
                                        "look for records at every offset, not for one that fits all");
  command->add_option("--most", options->most, "with --scan: the most records to list (20)")
      ->type_name("N")
      ->check(CLI::Range(1, 1'000'000).description(""))
      ->needs(scan);
  command->footer(
      "Lists the records that fit the bytes exactly. Those with the fewest doubts come first, and among\n"
      "them those with the most texts, sequences and maps. If no record fits, lists those that fit the\n"
      "start of the bytes, and exits with 1.\n\n"
      "--scan lists records without doubts that do not overlap, those with the most evidence: texts, known\n"
      "tags, lists that fit, dates. Records of numbers alone look like any bytes and are not found, nor are\n"
      "records that have only empty texts and lists. The time grows with the bytes.\n\n"
      "  zvuti guess inbox/reward.bin\n"
      "  zvuti guess --scan evening.bin");
  command->callback([options, &exitCode] { exitCode = Guess(*options); });
}

}  // namespace tool
