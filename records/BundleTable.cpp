#include <ZvUtiLib/records/Bundles.h>

#include <algorithm>
#include <new>
#include <tuple>

namespace {

using Entries = std::vector<BundleEntry>;

int SizeOf(const std::vector<std::uint32_t>& numbers) { return static_cast<int>(numbers.size()); }

bool IsBefore(const BundleEntry& a, const BundleEntry& b) {
  return std::tie(a.ItemId, a.Count, a.Value1, a.Value2) < std::tie(b.ItemId, b.Count, b.Value1, b.Value2);
}

// A bundle that others are compared with. Entries are searched linearly at first. Once the searches have
// passed so many entries that sorting would have been cheaper, they use a sorted copy.
class Wanted {
 public:
  explicit Wanted(const BundleRecord& record)
      : record_(record), steps_(kStepsPerEntry * record.Entries.size()) {}

  bool IsMetBy(const BundleRecord& stored) {
    return stored.Value == record_.Value && stored.Amount2 == record_.Amount2 &&
           stored.Amount1 == record_.Amount1 && stored.Entries.size() == record_.Entries.size() &&
           std::all_of(stored.Entries.begin(), stored.Entries.end(),
                       [this](const BundleEntry& entry) { return Has(entry); });
  }

 private:
  static constexpr std::size_t kStepsPerEntry = 16;

  bool Has(const BundleEntry& entry) {
    if (!sorted_.empty()) return std::binary_search(sorted_.begin(), sorted_.end(), entry, IsBefore);
    const auto found = std::find(record_.Entries.begin(), record_.Entries.end(), entry);
    const auto passed = static_cast<std::size_t>(found - record_.Entries.begin());
    if (passed > steps_) Sort();
    steps_ -= std::min(passed, steps_);
    return found != record_.Entries.end();
  }

  // If the copy can't be allocated, searches stay linear, with the same results.
  void Sort() try {
    Entries sorted = record_.Entries;
    std::sort(sorted.begin(), sorted.end(), IsBefore);
    sorted_.swap(sorted);
  } catch (const std::bad_alloc&) {
  }

  const BundleRecord& record_;
  std::size_t steps_;  // left for linear searches
  Entries sorted_;
};

}  // namespace

bool BundleRecord::IsSameAs(const BundleRecord& other) const { return Wanted(other).IsMetBy(*this); }

template <>
bool zvuti::AreEqual(const CUtiBundleTable& a, const CUtiBundleTable& b) {
  return a.Groups == b.Groups && a.Bundles == b.Bundles && a.MarkedIds == b.MarkedIds;
}

CUtiBundleTable::~CUtiBundleTable() = default;

void CUtiBundleTable::Clear() {
  Groups.clear();
  Bundles.clear();
}

// A group or bundle is created with its content, so that a failed allocation leaves no empty one.
void CUtiBundleTable::AddToGroup(unsigned value, unsigned groupKey) {
  const auto group = Groups.find(groupKey);
  if (group != Groups.end()) {
    group->second.push_back(value);
  } else {
    Groups.emplace(groupKey, std::vector<std::uint32_t>{value});
  }
}

int CUtiBundleTable::RemoveGroup(unsigned groupKey) { return static_cast<int>(Groups.erase(groupKey)); }

int CUtiBundleTable::GetGroup(unsigned groupKey, std::vector<std::uint32_t>& out) const {
  const auto group = Groups.find(groupKey);
  if (group != Groups.end()) out = group->second;
  return SizeOf(out);
}

int CUtiBundleTable::IsInGroup(unsigned value, unsigned groupKey) const {
  const auto group = Groups.find(groupKey);
  if (group == Groups.end()) return 0;
  return std::find(group->second.begin(), group->second.end(), value) != group->second.end() ? 1 : 0;
}

int CUtiBundleTable::FindGroupsOf(unsigned value, std::vector<std::uint32_t>& out) const {
  for (const auto& [key, numbers] : Groups) {
    out.insert(out.end(), static_cast<std::size_t>(std::count(numbers.begin(), numbers.end(), value)), key);
  }
  return SizeOf(out);
}

void CUtiBundleTable::SetBundle(unsigned key, const BundleRecord& record) {
  Bundles.insert_or_assign(key, BundleRecord(record));
}

BundleRecord* CUtiBundleTable::GetBundle(unsigned key) {
  const auto bundle = Bundles.find(key);
  return bundle == Bundles.end() ? nullptr : &bundle->second;
}

const BundleRecord* CUtiBundleTable::GetBundle(unsigned key) const {
  const auto bundle = Bundles.find(key);
  return bundle == Bundles.end() ? nullptr : &bundle->second;
}

int CUtiBundleTable::FindBundle(const BundleRecord& wanted, unsigned& key) const {
  Wanted sought(wanted);
  const auto found = std::find_if(Bundles.begin(), Bundles.end(),
                                  [&](const auto& bundle) { return sought.IsMetBy(bundle.second); });
  if (found == Bundles.end()) return 0;
  key = found->first;
  return 1;
}

int CUtiBundleTable::FindBundlesWithItem(int itemId, std::vector<std::uint32_t>& out) const {
  for (const auto& [key, bundle] : Bundles) {
    for (const BundleEntry& entry : bundle.Entries) {
      if (entry.ItemId == itemId) out.push_back(key);
    }
  }
  return SizeOf(out);
}

int CUtiBundleTable::FindSingleItemBundles(int itemId, std::vector<std::uint32_t>& out) const {
  for (const auto& [key, bundle] : Bundles) {
    if (bundle.Entries.size() == 1 && bundle.Entries.front().ItemId == itemId) out.push_back(key);
  }
  return SizeOf(out);
}

bool CUtiBundleTable::IsMarked(unsigned id) const { return MarkedIds.count(id) > 0; }
void CUtiBundleTable::MarkId(unsigned id) { MarkedIds.insert(id); }
