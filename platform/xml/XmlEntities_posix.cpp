#include "platform/xml/XmlEntities.h"

#include <algorithm>
#include <iterator>

namespace zvuti::xml {
namespace {

// Calls `isGood` with the name in each reference to an entity, those that XML predefines aside, until it says
// no; whether it never did.
template <class IsGood>
bool AllReferences(std::string_view text, IsGood isGood) {
  for (std::size_t at = text.find('&'); at != text.npos; at = text.find('&', at + 1)) {
    const std::string_view reference = text.substr(at + 1);
    const std::size_t end = reference.find_first_of("; \t\r\n<>&#'\"");
    if (end == reference.npos || reference[end] != ';' || IsPredefined(reference)) continue;
    if (!isGood(reference.substr(0, end))) return false;
  }
  return true;
}

// The part of well-formed content in front of `end`, which is cut off with it.
std::string_view CutTo(std::string_view end, std::string_view& content) {
  const std::size_t at = std::min(content.find(end), content.size());
  const std::string_view part = content.substr(0, at);
  content.remove_prefix(std::min(at + end.size(), content.size()));
  return part;
}

// Removes a tag from the front of `content`, which starts after its opening bracket. A bracket in a quoted
// value does not end the tag.
std::string_view CutTag(std::string_view& content) {
  char quote = '\0';
  std::size_t at = 0;
  for (; at < content.size() && (quote != '\0' || content[at] != '>'); ++at) {
    if (content[at] == quote) {
      quote = '\0';
    } else if (quote == '\0' && (content[at] == '\'' || content[at] == '"')) {
      quote = content[at];
    }
  }
  const std::string_view tag = content.substr(0, at);
  content.remove_prefix(at);
  return tag;
}

}  // namespace

bool IsPredefined(std::string_view text) {
  constexpr std::string_view kNames[] = {"lt;", "gt;", "amp;", "apos;", "quot;"};
  return std::any_of(std::begin(kNames), std::end(kNames),
                     [&](std::string_view name) { return text.substr(0, name.size()) == name; });
}

void Entities::Declare(std::string_view name, std::string_view value) {
  const NameId id = names_.Intern(name);
  if (id == entities_.size()) entities_.emplace_back().value = value;
}

bool Entities::IsWhole(std::string_view name) {
  const NameId id = names_.Find(name);
  if (id == kNoName) return false;
  Entity& entity = entities_[id];
  if (entity.isWhole == Answer::kNotAsked) {
    entity.isWhole = Answer::kYes;
    if (!AreKnownIn(entity.value)) entity.isWhole = Answer::kNo;
  }
  return entity.isWhole == Answer::kYes;
}

bool Entities::AreKnownIn(std::string_view text) {
  return AllReferences(text, [this](std::string_view name) { return IsWhole(name); });
}

bool Entities::AreKnownInTagsOf(std::string_view name) {
  const NameId id = names_.Find(name);
  if (id == kNoName) return true;  // a node of its own
  Entity& entity = entities_[id];
  if (entity.areTagsWhole == Answer::kNotAsked) {
    entity.areTagsWhole = Answer::kYes;
    if (!AreKnownInTagsWithin(entity.value)) entity.areTagsWhole = Answer::kNo;
  }
  return entity.areTagsWhole == Answer::kYes;
}

bool Entities::AreKnownInTagsWithin(std::string_view content) {
  while (!content.empty()) {
    const std::string_view text = CutTo("<", content);
    if (!AllReferences(text, [this](std::string_view name) { return AreKnownInTagsOf(name); })) return false;
    if (content.substr(0, 3) == "!--") {
      CutTo("-->", content);
    } else if (content.substr(0, 8) == "![CDATA[") {
      CutTo("]]>", content);
    } else if (content.substr(0, 1) == "?") {
      CutTo("?>", content);
    } else if (!AreKnownIn(CutTag(content))) {
      return false;
    }
  }
  return true;
}

bool Entities::AreKnownInParameters() {
  const std::string_view values = parameterValues_;
  if (!AreKnownIn(values.substr(parametersAsked_))) return false;
  parametersAsked_ = values.size();
  return true;
}

}  // namespace zvuti::xml
