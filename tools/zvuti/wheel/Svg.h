// Draws a spin: the speed, the distance and the angle during the last turn and a half, each over the ticks.
#pragma once

#include <string>

#include "wheel/Spin.h"

namespace tool {

/// Returns the picture as an SVG document.
std::string DrawSpin(const SpinOptions& options, const Spin& spin);

}  // namespace tool
