// Lists, dumps and fills a bundle table. Groups[key][index] is a number of a group, Bundles[key] is a record.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <ZvUtiLib/records/Bundles.h>

#include "data/wire/Codec.h"
#include "records/BundleFraming.h"
#include "records/DescribeTypes.h"
#include "records/DescribeWalks.h"

ZV_EXTERN_RECORD(BundleRecord)

namespace zvuti::wire {
namespace {

constexpr std::size_t kMostMembers = 1'000'000;  // of a group, unless all members are given

std::string Element(const char* name, std::uint32_t key) {
  return std::string(name) + "[" + std::to_string(key) + "]";
}

template <class T>
void List(ListWalk& rows, const char* path, const char* field, RowRole role) {
  T value = 0;
  rows.Part(path, field, role, RowTypeOf(NumberRef::Of(value)));
}

void ListTable(ListWalk& rows) {
  List<std::int32_t>(rows, "group count", "Groups", RowRole::kCount);
  List<std::int32_t>(rows, "bundle count", "Bundles", RowRole::kCount);
  List<std::uint32_t>(rows, "Groups.key", "Groups", RowRole::kKey);
  List<std::uint32_t>(rows, "Groups[key].count", "Groups", RowRole::kLength);
  List<std::uint32_t>(rows, "Groups[key][index]", "Groups", RowRole::kElement);
  List<std::uint32_t>(rows, "Bundles.key", "Bundles", RowRole::kKey);
  rows.Part("Bundles[key]", "Bundles", RowRole::kValue,
            RowTypeOf(Codec<BundleRecord>::kType, Embedding::kNested));
}

template <class T>
T Show(DumpWalk& rows, const std::string& path, RowRole role) {
  T value = 0;
  rows.Part(path, role, NumberRef::Of(value));
  return value;
}

void DumpTable(DumpWalk& rows) {
  const auto groups = Show<std::int32_t>(rows, "group count", RowRole::kCount);
  const auto bundles = Show<std::int32_t>(rows, "bundle count", RowRole::kCount);
  for (std::int32_t i = 0; i < groups && !rows.IsEnded(); ++i) {
    const auto key = Show<std::uint32_t>(rows, "Groups.key", RowRole::kKey);
    const std::string group = Element("Groups", key);
    const auto count = Show<std::uint32_t>(rows, group + ".count", RowRole::kLength);
    for (std::uint32_t member = 0; member < count && !rows.IsEnded(); ++member) {
      Show<std::uint32_t>(rows, Element(group.c_str(), member), RowRole::kElement);
    }
  }
  for (std::int32_t i = 0; i < bundles && !rows.IsEnded(); ++i) {
    const auto key = Show<std::uint32_t>(rows, "Bundles.key", RowRole::kKey);
    BundleRecord bundle;
    rows.Record(Element("Bundles", key).c_str(), Codec<BundleRecord>::kType, &bundle, Embedding::kNested);
  }
}

void Put(std::string& bytes, std::size_t number) {
  const auto word = static_cast<std::uint32_t>(number);
  bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
}

// Separates the values of "Groups.key" or "Bundles.key" from the others.
struct Keyed {
  explicit Keyed(const Values& all) {
    for (const Given& value : all) (value.rest == ".key" ? keys : entries).push_back(value);
  }

  // The keys are redundant, since the entries have theirs in brackets; they are only checked.
  void CheckKeys(const std::vector<Entry>& found) const {
    for (std::size_t i = 0; i < keys.size(); ++i) {
      if (keys.size() != found.size() || NumberOf(keys[i], 4, false) != found[i].key)
        Refuse(keys[i], "the keys are not those of the entries, in their order");
    }
  }

  Values keys, entries;
};

void PutGroup(const Entry& group, std::string& bytes) {
  Values sizes, members;
  for (const Given& value : group.values) {
    const bool isCount = value.rest == ".count";
    (isCount ? sizes : members).push_back(value);
    if (isCount) sizes.back().rest = {};
  }
  const std::vector<Entry> elements = ByNumber(members, 4, false);
  // A short text must not demand gigabytes.
  const std::size_t most = std::max(kMostMembers, elements.size());
  const std::size_t count = SizeOf(elements, sizes, most);
  Put(bytes, static_cast<std::uint32_t>(group.key));
  Put(bytes, count);
  auto element = elements.begin();
  for (std::size_t i = 0; i < count; ++i) {
    const bool isGiven = element != elements.end() && static_cast<std::size_t>(element->key) == i;
    const Given* value = isGiven ? OnlyOne((element++)->values, "no such element") : nullptr;
    Put(bytes, value ? static_cast<std::uint32_t>(NumberOf(*value, 4, false)) : 0);
  }
}

void FillTable(const Values& values, std::string& bytes) {
  Fields fields(values);
  const Keyed givenGroups(fields.Take("Groups")), givenBundles(fields.Take("Bundles"));
  const Entries groups(givenGroups.entries, fields.Take("group count"), false);
  const Entries bundles(givenBundles.entries, fields.Take("bundle count"), false);
  fields.RefuseRest("CUtiBundleTable");
  givenGroups.CheckKeys(groups.entries);
  givenBundles.CheckKeys(bundles.entries);
  Put(bytes, static_cast<std::uint32_t>(groups.count));
  Put(bytes, static_cast<std::uint32_t>(bundles.count));
  for (const Entry& group : groups.entries) PutGroup(group, bytes);
  for (const Entry& entry : bundles.entries) {
    Put(bytes, static_cast<std::uint32_t>(entry.key));
    BundleRecord bundle;
    PutRows(Codec<BundleRecord>::kType, &bundle, BehindPoint(entry.values, "no such element"), bytes);
  }
}

constexpr CustomFraming kFraming = {ListTable, DumpTable, FillTable};

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
    [](const void* record, const void* other) {
      return *static_cast<const CUtiBundleTable*>(record) == *static_cast<const CUtiBundleTable*>(other);
    },
    nullptr,
    &kFraming,
};

}  // namespace zvuti::wire
