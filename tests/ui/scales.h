#pragma once

#include <QtGlobal>
#include <cmath>
#include <vector>

namespace quorvane {

// At which things are drawn, and how far from a whole device pixel they begin.
inline const std::vector<qreal> drawnScales{1, 1.25, 1.5, 1.75, 2};
inline const std::vector<qreal> drawnOffsets{0, 0.25, 1, 3, 4.5, 7};

// How many device pixels a line of that thickness covers.
inline int wholePixels(qreal logical, qreal scale) {
  return static_cast<int>(std::ceil(logical * scale - 0.5));
}

}  // namespace quorvane
