#pragma once

#include <QtGlobal>
#include <cmath>
#include <vector>

namespace quorvane {

// The scales that tests draw at, and by how many logical pixels they move what they draw.
inline const std::vector<qreal> drawnScales{1, 1.25, 1.5, 1.75, 2};
inline const std::vector<qreal> drawnOffsets{0, 0.25, 1, 3, 4.5, 7};

// How many device pixels a line of this logical thickness covers.
inline int wholePixels(qreal logical, qreal scale) {
  return static_cast<int>(std::ceil(logical * scale - 0.5));
}

}  // namespace quorvane
