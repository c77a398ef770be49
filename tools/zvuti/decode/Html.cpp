#include "decode/Html.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include <ZvUtiLib/gbk/Conversion.h>

#include "decode/FieldTree.h"
#include "shared/Files.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kMostBytes = std::size_t{256} << 10;
constexpr std::size_t kRow = 16;  // bytes per line

constexpr const char* kStyle = R"(<style>
body { margin: 0; font: 14px/1.5 system-ui, sans-serif; color: #1f2328; background: #fff; }
header { padding: 10px 20px; border-bottom: 1px solid #d0d7de; }
h1 { margin: 0; font-size: 18px; }
header p, .problem { margin: 2px 0 0; color: #59636e; }
.problem { color: #b42318; }
main { display: flex; gap: 24px; padding: 0 20px; align-items: flex-start; }
.pane { height: calc(100vh - 76px); overflow: auto; padding: 10px 0; }
#fields { flex: 1; }
pre, td { font: 13px/1.6 ui-monospace, Menlo, Consolas, "DejaVu Sans Mono", monospace; }
pre { margin: 0; padding-right: 12px; }
pre b { color: #8c959f; font-weight: normal; user-select: none; }
i { font-style: normal; padding: 1px 0; border-radius: 3px; }
i.odd { background: #eef4ff; }
i.rest { color: #b42318; }
table { border-collapse: collapse; width: 100%; }
td { padding: 0 14px 0 0; vertical-align: top; white-space: pre; }
td:last-child { white-space: pre-wrap; overflow-wrap: anywhere; }
td.type, td.offset { color: #8c959f; }
td.offset { text-align: right; }
tr.heading td.name { font-weight: 600; }
.lit { background: #ffd966 !important; color: #1f2328 !important; }
tr.lit td { color: #1f2328; }
@media (prefers-color-scheme: dark) {
  body { color: #e6edf3; background: #0d1117; }
  header { border-color: #30363d; }
  i.odd { background: #17243b; }
}
</style>
)";

// A byte lights its field, the fields' bytes and nothing else; a line lights all bytes of it. `own` maps a
// byte to the number of its line.
constexpr const char* kScript = R"(<script>
const bytes = document.querySelectorAll('i'), lines = document.querySelectorAll('tr');
const own = new Map();
lines.forEach((line, number) => {
  if (line.classList.contains('heading')) return;
  const from = +line.dataset.from, end = from + +line.dataset.size;
  for (let at = from; at < end; at++) own.set(at, number);
});
let lit = [];
function light(line) {
  lit.forEach(item => item.classList.remove('lit'));
  lit = [];
  if (!line) return;
  const from = +line.dataset.from, end = from + +line.dataset.size;
  lit = [line, ...[...bytes].slice(from, end)];
  lit.forEach(item => item.classList.add('lit'));
}
document.getElementById('bytes').addEventListener('mouseover', event => {
  const at = event.target.dataset.at;
  const line = at === undefined ? undefined : lines[own.get(+at)];
  light(line);
  if (line) line.scrollIntoView({ block: 'nearest' });
});
document.getElementById('fields').addEventListener('mouseover', event => {
  const line = event.target.closest('tr');
  light(line);
  if (line && bytes[line.dataset.from]) bytes[line.dataset.from].scrollIntoView({ block: 'nearest' });
});
</script>
)";

// Escapes UTF-8 text. What is not UTF-8, and control characters, become question marks.
std::string Escaped(std::string_view text) {
  if (!zvuti::IsValidUtf8(text)) return Escaped(zvuti::Utf16ToUtf8(zvuti::Utf8ToUtf16(text).text).text);
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      default:
        escaped += (c >= 0 && c < ' ') || c == 0x7F ? '?' : c;
    }
  }
  return escaped;
}

// For each byte, whether it is shaded, so that neighbouring fields are told apart.
std::vector<bool> Shades(const std::vector<FieldLine>& lines, std::size_t count) {
  std::vector<bool> shades(count, false);
  bool isOdd = false;
  for (const FieldLine& line : lines) {
    if (line.isHeading) continue;
    for (std::size_t i = 0; i < line.size; ++i) shades[line.offset + i] = isOdd;
    isOdd = !isOdd;
  }
  return shades;
}

std::string BytesPane(std::string_view bytes, std::size_t skipped, std::size_t decoded,
                      const std::vector<FieldLine>& lines) {
  const std::vector<bool> shades = Shades(lines, bytes.size());
  std::string pane = "<div class=\"pane\"><pre id=\"bytes\">";
  char text[64];
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (at % kRow == 0) {
      std::snprintf(text, sizeof text, "%s<b>%6zu  </b>", at == 0 ? "" : "\n", skipped + at);
      pane += text;
    }
    const char* const kind = at >= decoded ? " class=rest" : shades[at] ? " class=odd" : "";
    std::snprintf(text, sizeof text, "<i data-at=%zu%s>%02X</i>", at, kind,
                  static_cast<unsigned>(static_cast<unsigned char>(bytes[at])));
    pane += text;
    if (at % kRow != kRow - 1) pane += at % kRow == kRow / 2 - 1 ? "  " : " ";
  }
  return pane + "</pre></div>\n";
}

std::string FieldsPane(const std::vector<FieldLine>& lines, std::size_t skipped) {
  std::string pane = "<div class=\"pane\" id=\"fields\"><table>\n";
  for (const FieldLine& line : lines) {
    pane += "<tr data-from=" + std::to_string(line.offset) + " data-size=" + std::to_string(line.size) +
            (line.isHeading ? " class=heading" : "") + "><td class=offset>" +
            std::to_string(skipped + line.offset) + "</td><td class=name>" +
            std::string(2 * line.depth, ' ') + Escaped(line.name) + "</td><td class=type>" +
            Escaped(line.type) + "</td><td>" + Escaped(line.value) + "</td></tr>\n";
  }
  return pane + "</table></div>\n";
}

}  // namespace

std::string HtmlOf(const Messages& messages, std::string_view bytes, std::size_t skipped,
                   const std::string& layout, const std::string& source) {
  if (bytes.size() > kMostBytes)
    throw Failure("a page shows at most 256 KB, not " + std::to_string(bytes.size()) + " bytes");
  const std::vector<FieldLine> lines = LinesOf(messages);
  const std::size_t left = bytes.size() - messages.size;
  std::string page = "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">\n<title>" +
                     Escaped(layout) + " - " + Escaped(source) + "</title>\n" + kStyle +
                     "</head><body>\n<header><h1>" + Escaped(layout) + "</h1><p>" + Escaped(source) + ", " +
                     Count(bytes.size(), "byte") +
                     (skipped > 0 ? " from offset " + std::to_string(skipped) : "") + "</p>";
  if (!messages.problem.empty()) page += "<p class=problem>" + Escaped(messages.problem) + "</p>";
  if (left > 0) page += "<p class=problem>" + Count(left, "byte") + " not decoded</p>";
  page += "</header>\n<main>\n" + BytesPane(bytes, skipped, messages.size, lines) +
          FieldsPane(lines, skipped) + "</main>\n" + kScript + "</body></html>\n";
  return page;
}

}  // namespace tool
