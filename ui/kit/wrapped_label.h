#pragma once

#include <QPalette>

#include "ui/kit/metrics.h"

class QLabel;

namespace quorvane {

// A label that shows plain text only and wraps it, with this object name, font and colour. The
// caller owns it until it has a parent.
QLabel* wrappedLabel(const char* objectName, Metrics::Type type, QPalette::ColorRole role);

}  // namespace quorvane
