// Messages as a page for a browser.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "decode/Messages.h"

namespace tool {

/// Returns a page with the bytes on one side and the fields on the other: pointing at either lights both. The
/// page is complete in itself. Offsets are shown from `skipped` on; `layout` and `source` are for the title.
/// Throws a Failure for more than 256 KB.
std::string HtmlOf(const Messages& messages, std::string_view bytes, std::size_t skipped,
                   const std::string& layout, const std::string& source);

}  // namespace tool
