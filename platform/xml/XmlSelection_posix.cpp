#include "platform/xml/XmlSelection.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "gbk/Ascii.h"

namespace zvuti::xml {
namespace {

enum class Axis { kSelf, kParent, kChild, kAttribute };
enum class Test { kName, kAnyElement, kText, kComment, kAnyNode };

struct Filter;

struct Step {
  bool isDeep = false;  // after "//": also starts from all descendants
  Axis axis = Axis::kSelf;
  Test test = Test::kAnyNode;
  NameId name = kNoName;  // stays so for a name that the document does not have
  std::vector<Filter> filters;
};

struct Path {
  bool isAbsolute = false;
  std::vector<Step> steps;
};

struct Filter {
  enum class Kind { kIndex, kPath, kValue } kind = Kind::kPath;
  std::uint32_t index = 0;
  Path path;                         // for kValue: the attribute alone
  std::optional<std::string> value;  // as in the tree
};

// Reads a selection; each function is false where it is malformed.
class SelectionParser {
 public:
  SelectionParser(std::string_view text, const XmlTree& tree) : rest_(text), tree_(tree) {}

  bool ReadAll(Path& path) { return ReadPath(path) && rest_.empty(); }

 private:
  static constexpr int kDeepestFilter = 32;  // reading recurses for each
  // A path in a filter keeps the places of all its steps until it is walked, up to 8 bytes a node for each.
  // This bounds the steps that are kept at a time, in filters within each other taken together.
  static constexpr std::size_t kMostStepsInFilters = 64;

  static bool IsNameStart(char byte) {
    return (byte & 0x80) != 0 || byte == '_' || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  }
  static bool IsInName(char byte) { return IsNameStart(byte) || IsDigit(byte) || byte == '-' || byte == '.'; }

  void SkipBlanks() {
    while (!rest_.empty() && IsXmlSpace(rest_.front())) rest_.remove_prefix(1);
  }
  bool Starts(char byte) const { return !rest_.empty() && rest_.front() == byte; }
  bool Take(char byte) {
    if (!Starts(byte)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  std::string_view TakeFirst(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  bool ReadPath(Path& path) {
    SkipBlanks();
    bool isDeep = false;
    if (Take('/')) {
      path.isAbsolute = true;
      isDeep = Take('/');
      SkipBlanks();
      if (!isDeep && (rest_.empty() || Starts(']'))) return true;  // the document itself
    }
    for (;; isDeep = Take('/')) {
      if (depth_ > 0 && ++stepsInFilters_ > kMostStepsInFilters) return false;
      Step& step = path.steps.emplace_back();
      step.isDeep = isDeep;
      if (!ReadStep(step)) return false;
      SkipBlanks();
      if (!Take('/')) return true;
    }
  }

  bool ReadStep(Step& step) {
    SkipBlanks();
    if (Take('.')) {
      step.axis = Take('.') ? Axis::kParent : Axis::kSelf;
      return true;
    }
    step.axis = Take('@') ? Axis::kAttribute : Axis::kChild;
    SkipBlanks();
    if (step.axis == Axis::kChild && Take('*')) {
      step.test = Test::kAnyElement;
    } else {
      const std::string_view name = ReadName();
      step.test = Test::kName;
      const std::optional<std::string> own = tree_.FromUtf8(name);
      step.name = own ? tree_.names.Find(*own) : kNoName;
      SkipBlanks();
      if (name.empty() || (Starts('(') && !ReadFunction(name, step))) return false;
    }
    for (SkipBlanks(); Take('['); SkipBlanks()) {
      if (!ReadFilter(step.filters.emplace_back())) return false;
      SkipBlanks();
      if (!Take(']')) return false;
    }
    return true;
  }

  bool ReadFunction(std::string_view name, Step& step) {
    if (step.axis != Axis::kChild) return false;
    if (name == "text") {
      step.test = Test::kText;
    } else if (name == "comment") {
      step.test = Test::kComment;
    } else if (name == "node") {
      step.test = Test::kAnyNode;
    } else {
      return false;
    }
    Take('(');
    SkipBlanks();
    return Take(')');
  }

  // A name with or without a prefix, "" where there is none or only half of one.
  std::string_view ReadName() {
    const std::size_t first = PartOfName(rest_);
    if (first == 0) return {};
    if (rest_.size() == first || rest_[first] != ':') return TakeFirst(first);
    const std::size_t second = PartOfName(rest_.substr(first + 1));
    return second == 0 ? std::string_view() : TakeFirst(first + 1 + second);
  }

  static std::size_t PartOfName(std::string_view text) {
    if (text.empty() || !IsNameStart(text.front())) return 0;
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsInName) - text.begin());
  }

  bool ReadFilter(Filter& filter) {
    if (++depth_ > kDeepestFilter) return false;
    const std::size_t outer = stepsInFilters_;
    const bool isRead = ReadFilterBody(filter);
    stepsInFilters_ = outer;
    --depth_;
    return isRead;
  }

  bool ReadFilterBody(Filter& filter) {
    SkipBlanks();
    if (!rest_.empty() && IsDigit(rest_.front())) {
      filter.kind = Filter::Kind::kIndex;
      std::uint64_t index = 0;
      constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
      while (!rest_.empty() && IsDigit(rest_.front())) {
        index = std::min(kMost, index * 10 + static_cast<std::uint64_t>(TakeFirst(1).front() - '0'));
      }
      filter.index = static_cast<std::uint32_t>(index);
      return true;
    }
    if (!ReadPath(filter.path)) return false;
    SkipBlanks();
    if (!Take('=')) return true;
    SkipBlanks();
    filter.kind = Filter::Kind::kValue;
    const bool isAttribute = !filter.path.isAbsolute && filter.path.steps.size() == 1 &&
                             filter.path.steps[0].axis == Axis::kAttribute &&
                             filter.path.steps[0].filters.empty();
    if (!isAttribute || rest_.empty() || (rest_.front() != '\'' && rest_.front() != '"')) return false;
    const char quote = TakeFirst(1).front();
    filter.value = tree_.FromUtf8(TakeFirst(rest_.find(quote)));
    return Take(quote);
  }

  std::string_view rest_;
  const XmlTree& tree_;
  int depth_ = 0;
  std::size_t stepsInFilters_ = 0;  // of all filters that are open
};

// Works on whole sets of places at each step, so that no node is looked at twice for one step.
class Evaluator {
 public:
  explicit Evaluator(const XmlTree& tree) : tree_(tree) {}

  std::optional<Place> First(const Path& path, Place from) const {
    std::vector<Place> places{path.isAbsolute ? Place{} : from};
    for (const Step& step : path.steps) places = Apply(step, places, &step == &path.steps.back());
    return places.empty() ? std::nullopt : std::optional(places.front());
  }

 private:
  NodeId ParentOf(Place place) const {
    return place.attribute != 0 ? place.node : tree_.nodes[place.node].parent;
  }

  bool Matches(const Step& step, NodeId id) const {
    const Node& node = tree_.nodes[id];
    switch (step.test) {
      case Test::kName:
        return node.kind == NodeKind::kElement && node.name == step.name;
      case Test::kAnyElement:
        return node.kind == NodeKind::kElement;
      case Test::kText:
        return node.kind == NodeKind::kText || node.kind == NodeKind::kCData;
      case Test::kComment:
        return node.kind == NodeKind::kComment;
      case Test::kAnyNode:
        return true;
    }
    return false;
  }

  // Calls `visit` with each place that the step starts from, in document order but for attributes,
  // until it returns false.
  template <class Visit>
  void VisitStarts(const Step& step, const std::vector<Place>& from, Visit visit) const {
    NodeId next = 0;  // those before it have been visited
    for (const Place place : from) {
      if (!step.isDeep || place.attribute != 0) {
        if (!visit(place)) return;
        continue;
      }
      for (next = std::max(next, place.node); next < tree_.nodes[place.node].end; ++next) {
        if (!visit(Place{next})) return;
      }
    }
  }

  // What one step reaches from `from`: sorted, each place once. With `isFirstEnough` only the front of
  // the result counts.
  std::vector<Place> Apply(const Step& step, const std::vector<Place>& from, bool isFirstEnough) const {
    std::vector<Place> reached;
    const bool mayStop = isFirstEnough && step.filters.empty() && step.axis != Axis::kParent;
    Place best{std::numeric_limits<NodeId>::max()};
    VisitStarts(step, from, [&](Place start) {
      if (mayStop && best < start) return false;  // all that it reaches comes later still
      const std::size_t before = reached.size();
      Reach(step, start, mayStop, reached);
      if (mayStop && reached.size() > before) best = std::min(best, reached[before]);
      return true;
    });
    for (const Filter& filter : step.filters) Keep(filter, reached);
    if (!std::is_sorted(reached.begin(), reached.end())) std::sort(reached.begin(), reached.end());
    reached.erase(std::unique(reached.begin(), reached.end()), reached.end());
    return reached;
  }

  void Reach(const Step& step, Place start, bool isFirstEnough, std::vector<Place>& reached) const {
    const bool isNode = start.attribute == 0;
    const Node& node = tree_.nodes[start.node];
    switch (step.axis) {
      case Axis::kSelf:
        reached.push_back(start);
        break;
      case Axis::kParent:
        if (!isNode || start.node != kDocumentNode) reached.push_back({ParentOf(start)});
        break;
      case Axis::kAttribute:
        if (!isNode) break;
        if (const Attribute* found = tree_.FindAttribute(start.node, step.name)) {
          reached.push_back({start.node, static_cast<std::uint32_t>(found - tree_.attributes.data()) + 1});
        }
        break;
      case Axis::kChild:
        if (!isNode) break;
        for (NodeId child = start.node + 1; child < node.end; child = tree_.nodes[child].end) {
          if (!Matches(step, child)) continue;
          reached.push_back({child});
          if (isFirstEnough) break;
        }
        break;
    }
  }

  // Keeps the places that pass. Those with the same parent stand together, in document order.
  void Keep(const Filter& filter, std::vector<Place>& places) const {
    if (filter.kind == Filter::Kind::kPath) {
      KeepWithMatch(filter.path, places);
      return;
    }
    std::uint32_t position = 0;
    NodeId parent = kDocumentNode;
    bool isBegin = true;
    std::erase_if(places, [&](Place place) {
      if (filter.kind == Filter::Kind::kValue) return !HasValue(filter, place);
      position = isBegin || ParentOf(place) != parent ? 0 : position + 1;
      isBegin = false;
      parent = ParentOf(place);
      return position != filter.index;
    });
  }

  bool HasValue(const Filter& filter, Place place) const {
    if (place.attribute != 0 || !tree_.IsElement(place.node)) return false;
    const Attribute* found = tree_.FindAttribute(place.node, filter.path.steps[0].name);
    return found && tree_.Bytes(found->value) == filter.value;
  }

  // Keeps the places from which `path` reaches anything: forward all that is reached at each step, then
  // backward only what leads on.
  void KeepWithMatch(const Path& path, std::vector<Place>& places) const {
    if (path.isAbsolute) {
      if (!First(path, Place{})) places.clear();
      return;
    }
    std::vector<std::vector<Place>> sets{places};
    std::sort(sets[0].begin(), sets[0].end());
    for (const Step& step : path.steps) sets.push_back(Apply(step, sets.back(), false));
    for (std::size_t i = path.steps.size(); i-- > 0;) KeepLeadingTo(sets[i + 1], path.steps[i], sets[i]);
    std::erase_if(places, [&](Place place) { return !IsIn(sets[0], place); });
  }

  static bool IsIn(const std::vector<Place>& sorted, Place place) {
    return std::binary_search(sorted.begin(), sorted.end(), place);
  }

  bool IsAnyWithin(const std::vector<Place>& sorted, Place place) const {
    if (place.attribute != 0) return IsIn(sorted, place);
    const auto found = std::lower_bound(sorted.begin(), sorted.end(), place);
    return found != sorted.end() && found->node < tree_.nodes[place.node].end;
  }

  // Keeps those of `places` from which the step reaches one of `targets`.
  void KeepLeadingTo(const std::vector<Place>& targets, const Step& step, std::vector<Place>& places) const {
    std::vector<Place> starts;  // where the step, taken without "//", reaches a target
    for (const Place target : targets) {
      if (step.axis == Axis::kSelf) {
        starts.push_back(target);
      } else if (step.axis != Axis::kParent) {
        starts.push_back({ParentOf(target)});
      } else if (tree_.nodes[target.node].children > 0) {
        starts.push_back({target.node + 1});  // its first child
      }
    }
    std::sort(starts.begin(), starts.end());
    std::erase_if(places, [&](Place place) {
      if (step.axis == Axis::kParent) {
        const bool hasParent = place.attribute != 0 || place.node != kDocumentNode;
        if (hasParent && IsIn(targets, {ParentOf(place)})) return false;
        return !step.isDeep || !IsAnyWithin(starts, place);
      }
      return step.isDeep ? !IsAnyWithin(starts, place) : !IsIn(starts, place);
    });
  }

  const XmlTree& tree_;
};

}  // namespace

std::optional<Place> SelectFirst(const XmlTree& tree, Place from, std::string_view selection) {
  Path path;
  if (!SelectionParser(selection, tree).ReadAll(path)) return std::nullopt;
  return Evaluator(tree).First(path, from);
}

}  // namespace zvuti::xml
