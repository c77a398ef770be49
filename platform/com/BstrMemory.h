// What the stand-in for the object model needs of its texts beyond their public calls.
#pragma once

#include <string_view>

#include <ZvUtiLib/platform/XmlDom.h>

namespace zvuti {

/// A text of UTF-16 units made of well-formed UTF-8; null when the heap refuses.
BSTR AllocBstr(std::string_view utf8);
/// Makes a text shorter in place.
void ShortenBstr(BSTR text, unsigned length);

}  // namespace zvuti
