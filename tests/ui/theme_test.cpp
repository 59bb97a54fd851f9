#include "ui/kit/theme.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace quorvane {
namespace {

double linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
         0.0722 * linear(colour.blueF());
}

// The contrast ratio as WCAG defines it, from 1 to 21.
double contrast(const QColor& a, const QColor& b) {
  const double first = luminance(a) + 0.05;
  const double second = luminance(b) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

struct Pair {
  std::string what;
  QColor ink;
  QColor ground;
};

class ThemeColours : public testing::TestWithParam<const Theme*> {};

TEST_P(ThemeColours, TextStandsOutFromItsGrounds) {
  const Theme& t = *GetParam();
  const std::vector<Pair> pairs{
      {"ink on window", t.ink, t.window},
      {"ink on sidebar", t.ink, t.sidebar},
      {"ink on selection", t.ink, t.selection},
      {"ink on surface", t.ink, t.surface},
      {"ink on hover", t.ink, t.hover},
      {"ink on a changed row", t.ink, t.tint},
      {"ink on a warning", t.ink, t.warningGround},
      {"secondary on window", t.ink2, t.window},
      {"secondary on sidebar", t.ink2, t.sidebar},
      {"secondary on surface", t.ink2, t.surface},
      {"secondary on a changed row", t.ink2, t.tint},
      {"secondary on a warning", t.ink2, t.warningGround},
      {"code on its plate", t.ink2, t.well},
      {"quiet on surface", t.quiet, t.surface},
      {"link on sidebar", t.brandText, t.sidebar},
      {"changed on its pill", t.brandText, t.pill},
      {"text on brand", t.onBrand, t.brand},
      {"text on brand, hovered", t.onBrand, t.brandHover},
      {"text on brand, pressed", t.onBrand, t.brandPress},
      {"error on surface", t.error, t.surface},
      {"error on its ground", t.error, t.errorGround},
  };
  for (const Pair& pair : pairs) EXPECT_GE(contrast(pair.ink, pair.ground), 4.5) << pair.what;
}

TEST_P(ThemeColours, MarksStandOutFromTheirGrounds) {
  const Theme& t = *GetParam();
  const std::vector<Pair> pairs{
      {"slider's filled part on its groove", t.fill, t.groove},
      {"cap's edge on surface", t.capEdge, t.surface},
      {"focus ring on surface", t.ring, t.surface},
      {"focus ring on window", t.ring, t.window},
      {"focus ring on a changed row", t.ring, t.tint},
  };
  for (const Pair& pair : pairs) EXPECT_GE(contrast(pair.ink, pair.ground), 3.0) << pair.what;
}

INSTANTIATE_TEST_SUITE_P(Both, ThemeColours, testing::Values(&Theme::light(), &Theme::dark()),
                         [](const auto& each) { return each.param->isDark ? "Dark" : "Light"; });

TEST(Theme, TheBrandIsTheSameInBoth) {
  EXPECT_EQ(Theme::light().brand, QColor(240, 107, 0));
  EXPECT_EQ(Theme::dark().brand, Theme::light().brand);
}

TEST(Theme, FollowsWhetherTheDesktopsTextIsLighterThanItsGround) {
  QPalette desktop;
  desktop.setColor(QPalette::Window, Qt::white);
  desktop.setColor(QPalette::WindowText, Qt::black);
  EXPECT_FALSE(Theme::fitting(desktop).isDark);
  desktop.setColor(QPalette::Window, QColor(40, 40, 40));
  desktop.setColor(QPalette::WindowText, QColor(220, 220, 220));
  EXPECT_TRUE(Theme::fitting(desktop).isDark);
}

TEST(Theme, ItsPaletteGivesTheSameThemeBack) {
  for (const Theme* const theme : {&Theme::light(), &Theme::dark()}) {
    EXPECT_EQ(&Theme::fitting(theme->palette()), theme);
  }
}

}  // namespace
}  // namespace quorvane
