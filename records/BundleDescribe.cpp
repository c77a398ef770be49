// How a bundle table is listed, shown and filled: Groups[key][index] is a number of a group, and
// Bundles[key] a record.
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <ZvUtiLib/records/Bundles.h>

#include "data/wire/Codec.h"
#include "records/BundleFraming.h"
#include "records/DescribeWalks.h"

ZV_FOREIGN(BundleRecord)

namespace zvuti::wire {
namespace {

constexpr std::uint32_t kMostMembers = 1'000'000;  // that a group may be filled with by name

std::string Element(const char* name, std::uint32_t key) {
  return std::string(name) + "[" + std::to_string(key) + "]";
}

void ListTable(ListWalk& rows) {
  rows.Add("group count", "32");
  rows.Add("bundle count", "32");
  rows.Add("Groups.key", "32");
  rows.Add("Groups[key].count", "32");
  rows.Add("Groups[key][index]", "32");
  rows.Add("Bundles.key", "32");
  rows.Add("Bundles[key]", "BundleRecord", "BundleRecord");
}

template <class T>
T Show(DumpWalk& rows, const std::string& path) {
  T value = 0;
  rows.Number(path.c_str(), NumberRef::Of(value));
  return value;
}

void DumpTable(DumpWalk& rows) {
  const auto groups = Show<std::int32_t>(rows, "group count");
  const auto bundles = Show<std::int32_t>(rows, "bundle count");
  for (std::int32_t i = 0; i < groups && !rows.IsEnded(); ++i) {
    const auto key = Show<std::uint32_t>(rows, "Groups.key");
    const std::string group = Element("Groups", key);
    const auto count = Show<std::uint32_t>(rows, group + ".count");
    for (std::uint32_t member = 0; member < count && !rows.IsEnded(); ++member) {
      Show<std::uint32_t>(rows, Element(group.c_str(), member));
    }
  }
  for (std::int32_t i = 0; i < bundles && !rows.IsEnded(); ++i) {
    const auto key = Show<std::uint32_t>(rows, "Bundles.key");
    BundleRecord bundle;
    rows.Record(Element("Bundles", key).c_str(), Codec<BundleRecord>::kType, &bundle, Place::kNested);
  }
}

std::optional<std::uint32_t> Number(std::string_view text) {
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// Takes "[number]" off the front of a path.
std::optional<std::uint32_t> TakeIndex(std::string_view& path) {
  const std::size_t close = path.find(']');
  if (path.substr(0, 1) != "[" || close == path.npos) return std::nullopt;
  const auto index = Number(path.substr(1, close - 1));
  path.remove_prefix(close + 1);
  return index;
}

bool TakeName(std::string_view& path, std::string_view name) {
  if (path.substr(0, name.size()) != name) return false;
  path.remove_prefix(name.size());
  return true;
}

std::string FillGroup(CUtiBundleTable& table, std::string_view path, const std::string& value) {
  const auto key = TakeIndex(path);
  if (!key) return "no such element";
  const auto number = Number(value);
  if (!number) return "not a number that the field can hold";
  const bool isCount = path == ".count";
  const auto index = isCount ? number : TakeIndex(path);
  if (!index || (!isCount && !path.empty())) return "no such element";
  if (*index >= kMostMembers)
    return "a group is filled with fewer numbers than " + std::to_string(kMostMembers);
  auto& members = table.Groups[*key];
  if (isCount) {
    members.resize(*number);
    return {};
  }
  if (members.size() <= *index) members.resize(std::size_t{*index} + 1);
  members[*index] = *number;
  return {};
}

std::string FillTable(void* record, std::string_view path, const std::string& value) {
  auto& table = *static_cast<CUtiBundleTable*>(record);
  if (TakeName(path, "Groups")) return FillGroup(table, path, value);
  if (!TakeName(path, "Bundles")) return "there is no such field in CUtiBundleTable";
  const auto key = TakeIndex(path);
  if (!key || !TakeName(path, ".")) return "no such element";
  return FillField(Codec<BundleRecord>::kType, &table.Bundles[*key], path, value);
}

constexpr OwnForm kOwnForm = {ListTable, DumpTable, FillTable};

}  // namespace

const RecordType kBundleTableType = {
    "CUtiBundleTable",
    0,
    [] {
      return RecordType::Object(new CUtiBundleTable(),
                                [](void* record) { delete static_cast<CUtiBundleTable*>(record); });
    },
    [](CStreamReader& in, void* record) { static_cast<CUtiBundleTable*>(record)->Read(in); },
    [](CStreamWriter& out, const void* record) { static_cast<const CUtiBundleTable*>(record)->Write(out); },
    nullptr,
    &kOwnForm,
};

}  // namespace zvuti::wire
