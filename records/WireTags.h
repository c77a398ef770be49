// The wire tags of BinaryKind and StatusKind.
#pragma once

#include <cstdint>
#include <iterator>

#include <ZvUtiLib/records/WireKinds.h>

#include "data/wire/Rows.h"

namespace zvuti::wire {

inline constexpr std::uint32_t kBinaryTags[] = {0x722C4DEA, 0x2FF131AD};
inline constexpr std::uint32_t kStatusTags[] = {0xF8CAFFAC, 0x2A4C0070, 0xDD4FAA31, 0x258324D8, 0x77DF3C36,
                                                0xC07985EE, 0x7B42D4C9, 0xF7B6D143, 99999};
static_assert(std::size(kBinaryTags) == BinaryKind1 + 1);
static_assert(std::size(kStatusTags) == StatusKind8 + 1);

template <>
inline constexpr TagTable kTags<BinaryKind> = {"BinaryKind", kBinaryTags, std::size(kBinaryTags), true};
template <>
inline constexpr TagTable kTags<StatusKind> = {"StatusKind", kStatusTags, std::size(kStatusTags), false};

}  // namespace zvuti::wire
