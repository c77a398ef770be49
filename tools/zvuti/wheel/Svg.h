// The picture of a spin: speed, turns and the last turn over the ticks.
#pragma once

#include <string>

#include "wheel/Spin.h"

namespace tool {

/// An SVG document.
std::string DrawSpin(const SpinOptions& options, const Spin& spin);

}  // namespace tool
