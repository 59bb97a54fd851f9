#pragma once

#include <QFont>

class QWidget;

// Sizes in logical pixels, and fonts relative to the system font. Heights are minimums: larger
// fonts increase them.
namespace quorvane::Metrics {

inline constexpr int minimumWidth = 860;
inline constexpr int minimumHeight = 560;
inline constexpr int defaultWidth = 1120;
inline constexpr int defaultHeight = 740;
inline constexpr int narrowBelow = 1000;  // width of the window
inline constexpr int wideFrom = 1500;     // likewise

inline constexpr int sidebarWidth = 200;
inline constexpr int sidebarMinimum = 180;
inline constexpr int contentWidth = 1280;  // maximum width of a section's content
inline constexpr int cardWidth = 880;
inline constexpr int labelColumn = 200;  // of cards

inline constexpr int pageInset = 20;
inline constexpr int narrowInset = 14;
inline constexpr int cardInset = 14;
inline constexpr int cardRowPadding = 10;  // above and below
inline constexpr int cardLinePadding = 8;  // of compact rows
inline constexpr int gap = 8;

inline constexpr int cardRadius = 6;
inline constexpr int controlRadius = 5;
inline constexpr int plateRadius = 3;

inline constexpr int menuBarHeight = 26;
inline constexpr int headerHeight = 48;
inline constexpr int tuningHeaderHeight = 54;
inline constexpr int tallTuningHeaderHeight = 78;
inline constexpr int tuningRowHeight = 36;
inline constexpr int formRowHeight = 34;
inline constexpr int logRowHeight = 26;
inline constexpr int sidebarRowHeight = 34;
inline constexpr int saveBarHeight = 50;
inline constexpr int statusBarHeight = 30;
inline constexpr int buttonHeight = 28;
inline constexpr int rowControlHeight = 26;
inline constexpr int pillHeight = 16;
inline constexpr int symbolSize = 16;
inline constexpr int dotSize = 8;  // of a state indicator
inline constexpr int iconButtonSize = 28;
inline constexpr int stepButtonWidth = 23;

inline constexpr int ringWidth = 2;
inline constexpr int ringGap = 2;

// The side margin of a page's content, for the width of the widget's window.
int inset(const QWidget& widget);

// The larger of `height` and the height that a line of the font needs.
int atLeast(int height, const QFont& font);

// The sides of a symbol beside body text, of a button with only a symbol, and the width of a
// readout's minus and plus. They grow with the system font.
int symbolSide();
int iconButtonSide();
int stepButton();

enum class Type { pageTitle, dialogTitle, body, value, unit, caption, callout, pill, fixed };

QFont font(Type type);

}  // namespace quorvane::Metrics
