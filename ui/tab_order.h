#pragma once

#include <QWidget>
#include <vector>

namespace quorvane {

// Makes the Tab key go through the controls of these widgets one widget after another, and through
// those of each in the order in which they were made. All are in one window.
void chainTabOrder(const std::vector<QWidget*>& widgets);

}  // namespace quorvane
