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
      {"secondary on hover", t.ink2, t.hover},
      {"quiet on surface", t.quiet, t.surface},
      {"ink on an explained row", t.ink, t.soft},
      {"secondary on an explained row", t.ink2, t.soft},
      {"link on sidebar", t.brandText, t.sidebar},
      {"link on window", t.brandText, t.window},
      {"changed on its pill", t.brandText, t.pill},
      {"text on brand", t.onBrand, t.brand},
      {"text on brand, hovered", t.onBrand, t.brandHover},
      {"text on brand, pressed", t.onBrand, t.brandPress},
      {"preset that is on the base", t.okText, t.surface},
      {"error on surface", t.error, t.surface},
      {"error on window", t.error, t.window},
      {"error on its ground", t.error, t.errorGround},
      {"error on its plate", t.error, t.errorPlate},
      {"ink on a refused row", t.ink, t.errorGround},
      {"secondary on a refused row", t.ink2, t.errorGround},
      {"link on a refused row", t.brandText, t.errorGround},
      {"error on the save bar", t.error, t.tint},
      {"value that was taken", t.okText, t.surface},
      {"value that was taken, on an explained row", t.okText, t.soft},
  };
  for (const Pair& pair : pairs) EXPECT_GE(contrast(pair.ink, pair.ground), 4.5) << pair.what;
}

TEST_P(ThemeColours, MarksStandOutFromTheirGrounds) {
  const Theme& t = *GetParam();
  const std::vector<Pair> pairs{
      {"cap's edge on surface", t.capEdge, t.surface},
      {"cap's edge on a changed row", t.capEdge, t.tint},
      {"cap's edge on an explained row", t.capEdge, t.soft},
      {"edge on an explained row", t.edge, t.soft},
      {"slider's empty part on an explained row", t.track, t.soft},
      {"slider's filled part on an explained row", t.fill, t.soft},
      {"switch that is off on an explained row", t.switchOff, t.soft},
      {"edge on window", t.edge, t.window},
      {"edge on surface", t.edge, t.surface},
      {"edge on hover", t.edge, t.hover},
      {"edge on a changed row", t.edge, t.tint},
      {"slider's empty part on surface", t.track, t.surface},
      {"slider's empty part on a changed row", t.track, t.tint},
      {"slider's empty part under the pointer", t.ink2, t.surface},
      {"slider's filled part on surface", t.fill, t.surface},
      {"slider's filled part on a changed row", t.fill, t.tint},
      {"unsaved value's mark on surface", t.signal, t.surface},
      {"unsaved value's mark on a changed row", t.signal, t.tint},
      {"knob of an unsaved switch", t.knobOff, t.signal},
      {"mark on an unsaved value's cap", t.onBrand, t.signal},
      {"refused value's mark on its row", t.error, t.errorGround},
      {"refused value's mark on surface", t.error, t.surface},
      {"mark on a refused value's cap", t.surface, t.error},
      {"edge on a refused row", t.edge, t.errorGround},
      {"slider's empty part on a refused row", t.track, t.errorGround},
      {"slider's filled part on a refused row", t.fill, t.errorGround},
      {"focus ring on a refused row", t.ring, t.errorGround},
      {"switch that is off on surface", t.switchOff, t.surface},
      {"switch that is off on a changed row", t.switchOff, t.tint},
      {"switch that is on on surface", t.switchOn, t.surface},
      {"knob of a switch that is off", t.knobOff, t.switchOff},
      {"knob of a switch that is on", t.knobOn, t.switchOn},
      {"prominent button's edge on window", t.brandEdge, t.window},
      {"prominent button's edge on surface", t.brandEdge, t.surface},
      {"prominent button's edge on the save bar", t.brandEdge, t.tint},
      {"chosen section's mark", t.brandEdge, t.selection},
      {"destructive button's edge on window", t.errorLine, t.window},
      {"destructive button's edge on surface", t.errorLine, t.surface},
      {"destructive button's edge, hovered", t.errorLine, t.errorGround},
      {"dot without a base on window", t.idle, t.window},
      {"dot of a check that was left out", t.idle, t.surface},
      {"dot with a base on window", t.ok, t.window},
      {"dot of a check that passed", t.ok, t.surface},
      {"warning's triangle", t.warningIcon, t.warningGround},
      {"stronger preset's triangle", t.warningIcon, t.surface},
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
