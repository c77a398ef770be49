// The rows of a profile, used both by PlayerProfile and by AccountRecord.
#pragma once

#include "data/wire/Rows.h"

namespace zvuti::wire {

template <class V, class R>
ZV_INLINE constexpr void ProfileRows(V& v, R& r) {
  v.bits8(ZV_ROW(ProfileByte1));
  v.bits8(ZV_ROW(ProfileByte2));
  v.text(ZV_ROW(ProfileText1));
  v.text(ZV_ROW(ProfileText2));
  v.text(ZV_ROW(ProfileText3));
  v.text(ZV_ROW(ProfileText4));
  v.text(ZV_ROW(ProfileText5));
  v.text(ZV_ROW(ProfileText6));
  v.text(ZV_ROW(ProfileText7));
  v.text(ZV_ROW(ProfileText8));
}

}  // namespace zvuti::wire
