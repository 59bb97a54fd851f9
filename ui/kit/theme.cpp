#include "ui/kit/theme.h"

namespace quorvane {
namespace {

const QColor brandColour(0xF06B00);  // red 0.94, green 0.42, blue 0.0

const Theme* current = nullptr;

}  // namespace

const Theme& Theme::light() {
  static const Theme colours{
      .isDark = false,
      .window = 0xF3F4F6,
      .sidebar = 0xE9EBEE,
      .selection = 0xDADEE3,
      .surface = 0xFFFFFF,
      .hover = 0xECEFF2,
      .well = 0xF3F4F6,
      .hexWell = 0xF3F4F6,
      .soft = 0xF7F8F9,
      .line = 0xDCE0E4,
      .hairline = 0xE8EBEE,
      .edge = 0x808892,
      .divider = 0xDCE0E4,
      .ink = 0x14171A,
      .ink2 = 0x535B64,
      .quiet = 0x69717A,
      .inkDisabled = 0x8B939C,
      .brand = brandColour,
      .brandHover = 0xFF7E1A,
      .brandPress = 0xD65F00,
      .onBrand = 0x1B0F00,
      .brandText = 0x9C4400,
      .brandEdge = 0xC45100,
      .signal = 0xDB5F00,
      .tint = 0xFFF6EE,
      .tintLine = 0xF6D6BA,
      .pill = 0xFCE3CE,
      .ring = 0xC45100,
      .fill = 0x5E6873,
      .track = 0x808892,
      .graduation = 0xC3CAD1,
      .bar = 0x87909A,
      .cap = 0xFFFFFF,
      .capEdge = 0x7E8892,
      .capHoverEdge = 0x14171A,
      .switchOff = 0x7A838C,
      .switchOn = 0x3D454D,
      .knobOff = 0xFFFFFF,
      .knobOn = 0xFFFFFF,
      .warningGround = 0xFFF8DF,
      .warningLine = 0xE6CF86,
      .warningIcon = 0xA87400,
      .error = 0xB3261E,
      .errorGround = 0xFDF1F0,
      .errorLine = 0xC7605A,
      .errorPlate = 0xF8DAD7,
      .ok = 0x1E8E3E,
      .okText = 0x17702F,
      .idle = 0x808892,
  };
  return colours;
}

const Theme& Theme::dark() {
  static const Theme colours{
      .isDark = true,
      .window = 0x16181B,
      .sidebar = 0x111215,
      .selection = 0x27292E,
      .surface = 0x1C1E22,
      .hover = 0x2A2D32,
      .well = 0x26292D,
      .hexWell = 0x141618,
      .soft = 0x191B1E,
      .line = 0x2F3238,
      .hairline = 0x26292D,
      .edge = 0x6F7780,
      .divider = 0x3A3E44,
      .ink = 0xECEEF0,
      .ink2 = 0xA3ABB4,
      .quiet = 0x8B939C,
      .inkDisabled = 0x6F7780,
      .brand = brandColour,
      .brandHover = 0xFF7E1A,
      .brandPress = 0xD65F00,
      .onBrand = 0x1B0F00,
      .brandText = 0xFF9C54,
      .brandEdge = 0xF06B00,
      .signal = 0xF06B00,
      .tint = 0x272019,
      .tintLine = 0x523A26,
      .pill = 0x43301F,
      .ring = 0xFF9C54,
      .fill = 0x8A939D,
      .track = 0x6F7780,
      .graduation = 0x4A5057,
      .bar = 0x7A838C,
      .cap = 0xD5DADF,
      .capEdge = 0xD5DADF,
      .capHoverEdge = 0xFFFFFF,
      .switchOff = 0x6F7780,
      .switchOn = 0xC3CAD1,
      .knobOff = 0xFFFFFF,
      .knobOn = 0x16181B,
      .warningGround = 0x29240F,
      .warningLine = 0x5B4C19,
      .warningIcon = 0xE8BE43,
      .error = 0xFF8A80,
      .errorGround = 0x2B1C1B,
      .errorLine = 0xA85B55,
      .errorPlate = 0x47211F,
      .ok = 0x4CC26B,
      .okText = 0x4CC26B,
      .idle = 0x6F7780,
  };
  return colours;
}

const Theme& Theme::fitting(const QPalette& desktop) {
  const bool isDark =
      desktop.color(QPalette::WindowText).lightness() > desktop.color(QPalette::Window).lightness();
  return isDark ? dark() : light();
}

QPalette Theme::palette() const {
  QPalette palette;
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, ink);
  palette.setColor(QPalette::Base, surface);
  palette.setColor(QPalette::AlternateBase, well);
  palette.setColor(QPalette::Text, ink);
  palette.setColor(QPalette::PlaceholderText, quiet);
  palette.setColor(QPalette::Button, surface);
  palette.setColor(QPalette::ButtonText, ink);
  palette.setColor(QPalette::BrightText, error);
  palette.setColor(QPalette::Light, surface);
  palette.setColor(QPalette::Midlight, hover);
  palette.setColor(QPalette::Mid, edge);
  palette.setColor(QPalette::Dark, ink2);  // secondary text
  palette.setColor(QPalette::Shadow, line);
  palette.setColor(QPalette::Highlight, brand);
  palette.setColor(QPalette::HighlightedText, onBrand);
  palette.setColor(QPalette::Link, brandText);
  palette.setColor(QPalette::LinkVisited, brandText);
  palette.setColor(QPalette::ToolTipBase, surface);
  palette.setColor(QPalette::ToolTipText, ink);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, inkDisabled);
  }
  palette.setColor(QPalette::Disabled, QPalette::Button, window);
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  palette.setColor(QPalette::Inactive, QPalette::Highlight, selection);
  palette.setColor(QPalette::Inactive, QPalette::HighlightedText, ink);
  return palette;
}

const Theme& theme() { return current != nullptr ? *current : Theme::light(); }

void setTheme(const Theme& theme) { current = &theme; }

}  // namespace quorvane
