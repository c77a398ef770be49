#include <ZvUtiLib/records/Bundles.h>

#include <algorithm>

namespace {

int SizeOf(const std::vector<std::uint32_t>& numbers) { return static_cast<int>(numbers.size()); }

}  // namespace

bool BundleRecord::IsSameAs(const BundleRecord& other) const {
  if (Value != other.Value || Amount2 != other.Amount2 || Amount1 != other.Amount1) return false;
  if (Entries.size() != other.Entries.size()) return false;
  return std::all_of(Entries.begin(), Entries.end(), [&](const BundleEntry& entry) {
    return std::find(other.Entries.begin(), other.Entries.end(), entry) != other.Entries.end();
  });
}

CUtiBundleTable::~CUtiBundleTable() = default;

void CUtiBundleTable::Clear() {
  Groups.clear();
  Bundles.clear();
}

// A group or bundle is made with its content, so that a refused block leaves no empty one behind.
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
  const auto found = std::find_if(Bundles.begin(), Bundles.end(),
                                  [&](const auto& bundle) { return bundle.second.IsSameAs(wanted); });
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
