#include "platform/Path.h"

#include "gbk/CodePage936.h"

namespace zvuti {

std::string_view FolderOf(std::string_view path) {
  std::size_t end = 0;
  for (std::size_t i = 0, length; i < path.size(); i += length) {
    length = gbk::CharLength(path, i);
    const char last = path[i + length - 1];
    // A slash is never a GBK trail byte, so it separates even after a lead byte, which occurs in names in
    // other encodings.
    if (last == '/' || (last == '\\' && length == 1)) end = i + length;
  }
  return path.substr(0, end);
}

}  // namespace zvuti
