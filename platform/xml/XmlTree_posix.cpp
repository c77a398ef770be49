#include <functional>

#include "platform/xml/XmlTree.h"

namespace zvuti::xml {

NameId NameTable::Intern(std::string_view name) {
  if (spans_.size() * 2 >= slots_.size()) Grow();
  const std::size_t slot = SlotOf(name);
  if (slots_[slot] != kNoName) return slots_[slot];
  const Span span{static_cast<std::uint32_t>(text_.size()), static_cast<std::uint32_t>(name.size())};
  text_ += name;
  spans_.push_back(span);
  return slots_[slot] = static_cast<NameId>(spans_.size() - 1);
}

NameId NameTable::Find(std::string_view name) const {
  return slots_.empty() ? kNoName : slots_[SlotOf(name)];
}

// Where `name` stands, or the free slot where it belongs.
std::size_t NameTable::SlotOf(std::string_view name) const {
  std::size_t hash = 0;
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x9E3779B1u;
  std::size_t slot = (hash ^ hash >> 15) & (slots_.size() - 1);
  while (slots_[slot] != kNoName && At(slots_[slot]) != name) slot = (slot + 1) & (slots_.size() - 1);
  return slot;
}

void NameTable::Grow() {
  std::vector<NameId> larger(slots_.empty() ? 32 : slots_.size() * 2, kNoName);
  slots_.swap(larger);
  for (NameId id = 0; id < spans_.size(); ++id) slots_[SlotOf(At(id))] = id;
}

const Attribute* XmlTree::FindAttribute(NodeId element, NameId name) const {
  const Span span = nodes[element].attributes;
  for (std::uint32_t i = span.first; i < span.first + span.count; ++i) {
    if (attributes[i].name == name) return &attributes[i];
  }
  return nullptr;
}

}  // namespace zvuti::xml
