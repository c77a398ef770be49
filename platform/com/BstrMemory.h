// What the stand-in for the object model needs of its texts beyond their public calls.
#pragma once

#include <ZvUtiLib/platform/XmlDom.h>

namespace zvuti {

/// Makes a text shorter in place.
void ShortenBstr(BSTR text, unsigned length);

}  // namespace zvuti
