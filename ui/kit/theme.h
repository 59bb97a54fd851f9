#pragma once

#include <QColor>
#include <QPalette>

namespace quorvane {

// The colours of the window. Grey stands for what is on the base, the brand colour for what is not
// on it yet.
struct Theme {
  bool isDark = false;

  QColor window, sidebar, selection, surface, hover, well, hexWell;
  QColor line, hairline, edge;
  QColor ink, ink2, quiet, inkDisabled;
  QColor brand, brandHover, brandPress, onBrand, brandText;
  QColor tint, tintLine, pill, ring;
  QColor fill, groove, graduation, bar, cap, capEdge, capHoverEdge;
  QColor switchOff, switchOn, knobOff, knobOn;
  QColor warningGround, warningLine, warningIcon;
  QColor error, errorGround, errorLine;
  QColor ok, idle;

  static const Theme& light();
  static const Theme& dark();

  // The one for a palette of the desktop: dark when its text is lighter than its ground.
  static const Theme& fitting(const QPalette& desktop);

  QPalette palette() const;
};

// The theme in force; the application's style keeps it up to date.
const Theme& theme();
void setTheme(const Theme& theme);

}  // namespace quorvane
