// Hyperscan in block mode, with case-insensitive literals and the same lists and lines.
#include <hs/hs.h>

#include <map>
#include <memory>

#include "benchmarks/words/Data.h"
#include "benchmarks/words/Measure.h"

namespace bench {
namespace {

struct Database {
  explicit Database(const std::vector<std::string>& words) {
    std::vector<const char*> texts;
    std::vector<std::size_t> sizes;
    for (const std::string& word : words) {
      texts.push_back(word.data());
      sizes.push_back(word.size());
    }
    const auto count = static_cast<unsigned>(words.size());
    const std::vector<unsigned> flags(words.size(), HS_FLAG_CASELESS);
    std::vector<unsigned> ids(words.size());
    for (unsigned i = 0; i < count; ++i) ids[i] = i;
    hs_compile_error_t* error = nullptr;
    hs_compile_lit_multi(texts.data(), flags.data(), ids.data(), sizes.data(), count, HS_MODE_BLOCK, nullptr,
                         &database, &error);
    if (error) hs_free_compile_error(error);
    if (database) hs_alloc_scratch(database, &scratch);
  }
  ~Database() {
    hs_free_scratch(scratch);
    hs_free_database(database);
  }
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  std::size_t Bytes() const {
    std::size_t own = 0, work = 0;
    hs_database_size(database, &own);
    hs_scratch_size(scratch, &work);
    return own + work;
  }

  unsigned Count(const std::string& text) const {
    unsigned hits = 0;
    const auto onHit = [](unsigned, unsigned long long, unsigned long long, unsigned, void* context) {
      ++*static_cast<unsigned*>(context);
      return 0;
    };
    hs_scan(database, text.data(), static_cast<unsigned>(text.size()), 0, scratch, onHit, &hits);
    return hits;
  }
  bool IsMatched(const std::string& text) const {
    bool isHit = false;
    const auto onHit = [](unsigned, unsigned long long, unsigned long long, unsigned, void* context) {
      *static_cast<bool*>(context) = true;
      return 1;
    };
    hs_scan(database, text.data(), static_cast<unsigned>(text.size()), 0, scratch, onHit, &isHit);
    return isHit;
  }

  hs_database_t* database = nullptr;
  hs_scratch_t* scratch = nullptr;
};

const Database& DatabaseOf(std::size_t count) {
  static std::map<std::size_t, Database> databases;
  return databases.try_emplace(count, Words(count)).first->second;
}

// Measures a scan of `lines`, each of which contains `hits` words.
void MeasureScan(benchmark::State& state, std::size_t count, const std::vector<std::string>& lines,
                 unsigned hits, bool isCounting) {
  const Database& database = DatabaseOf(count);
  for (const std::string& line : lines) {
    if (database.Count(line) != hits) return state.SkipWithError("found a wrong number of words");
  }
  if (isCounting) {
    MeasureLines(state, lines, [&](const std::string& line) { return database.Count(line); });
  } else {
    MeasureLines(state, lines, [&](const std::string& line) { return database.IsMatched(line); });
  }
}

void Compile(benchmark::State& state, std::size_t count) {
  {
    const std::int64_t before = HeldBytes();
    const Database database(Words(count));
    if (!database.scratch) return state.SkipWithError("the word list does not compile");
    state.counters["held"] = static_cast<double>(HeldBytes() - before);
    state.counters["own"] = static_cast<double>(database.Bytes());
  }
  for (auto _ : state) {
    const Database database(Words(count));
    benchmark::DoNotOptimize(database.scratch);
  }
}

const bool kRegistered = [] {
  const auto add = [](const std::string& subject, std::size_t count, auto run) {
    return benchmark::RegisterBenchmark(Row(subject, "hyperscan", count).c_str(), run);
  };
  for (const std::size_t count : kListSizes) {
    for (const unsigned bytes : kLineSizes) {
      const std::string line = "Line" + std::to_string(bytes);
      add("Clean" + line, count,
          [=](auto& state) { MeasureScan(state, count, CleanLines(count, bytes), 0, false); });
      add("Hit" + line, count,
          [=](auto& state) { MeasureScan(state, count, LinesWithHit(count, bytes).lines, 1, false); });
      add("Mask" + line, count,
          [=](auto& state) { MeasureScan(state, count, LinesWithHit(count, bytes).lines, 1, true); });
    }
    add("CleanText", count,
        [=](auto& state) { MeasureScan(state, count, {CleanText(count, kTextSize)}, 0, false); });
    add("NearMisses", count,
        [=](auto& state) { MeasureScan(state, count, {NearMisses(count, kTextSize)}, 0, false); });
    add("Load", count, [=](auto& state) { Compile(state, count); })->Repetitions(kLoadRepetitions);
  }
  return true;
}();

}  // namespace
}  // namespace bench
