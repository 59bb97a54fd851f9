#pragma once

#include <QColor>
#include <QPalette>

namespace quorvane {

// The colours of the window. Grey marks values that are on the base, orange unsaved ones. Text has
// a contrast of 4.5 at least on every ground that it stands on, controls and their states have 3.
struct Theme {
  bool isDark = false;

  QColor window, sidebar, selection, surface, hover, well, hexWell;
  QColor soft;  // the row that a panel explains
  QColor line, hairline, edge;
  QColor divider;  // inside a control; decoration
  QColor ink, ink2, quiet, inkDisabled;
  QColor brand, brandHover, brandPress, onBrand, brandText;
  QColor brandEdge;  // border of a prominent button, mark of the chosen section
  QColor signal;     // marks of an unsaved value
  QColor tint, tintLine, pill, ring;
  QColor fill, track, graduation, bar, cap, capEdge, capHoverEdge;
  QColor switchOff, switchOn, knobOff, knobOn;
  QColor warningGround, warningLine, warningIcon;
  QColor error, errorGround, errorLine;
  QColor errorPlate;  // code plate and pill of a value that the base did not take
  QColor ok, okText, idle;

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
