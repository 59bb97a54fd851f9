#pragma once

#include <QWidget>
#include <functional>
#include <vector>

namespace quorvane {

// Makes the Tab key go through the controls of these widgets one widget after another, and through
// those of each in the order in which they were made. All are in one window.
void chainTabOrder(const std::vector<QWidget*>& widgets);

// Whether the Tab key stops at the widget: it is visible, enabled and a control.
bool takesTab(const QWidget& widget);

// Whether the widget may be given the focus unasked: it destroys nothing, and takes no typing.
bool isSafeToFocus(const QWidget& widget);

// The next or previous widget in the Tab order of the window at which the Tab key stops and that
// fits; none when there is no other.
using Fits = std::function<bool(const QWidget&)>;
QWidget* nextControl(const QWidget& from, const Fits& fits = {});
QWidget* previousControl(const QWidget& from, const Fits& fits = {});

}  // namespace quorvane
