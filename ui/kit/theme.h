#pragma once

#include <QColor>
#include <QPalette>

namespace quorvane {

// The colours of the window. Grey marks values that are on the base, the brand colour unsaved ones.
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

  // The theme for a desktop palette: dark if its text is lighter than its background.
  static const Theme& fitting(const QPalette& desktop);

  QPalette palette() const;
};

// The current theme; the application's style updates it.
const Theme& theme();
void setTheme(const Theme& theme);

}  // namespace quorvane
