#pragma once

class QFont;
class QString;

namespace quorvane {

// The horizontal advance of the text in the font, in logical pixels, as QFontMetrics has it. Keeps
// the results of the last texts, because layouts ask for the same ones many times and shaping a
// text is slow. For the GUI thread.
int textWidth(const QFont& font, const QString& text);

}  // namespace quorvane
