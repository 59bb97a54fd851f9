#include "ui/presets/preset_notes.h"

#include <QPainter>
#include <QTextLayout>
#include <limits>

#include "support/text.h"
#include "ui/kit/hits.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/text_link.h"

namespace quorvane {
namespace {

constexpr int foldedLines = 2;
constexpr int linkGap = 4;

QFont notesFont() { return Metrics::font(Metrics::Type::callout); }

// The first lines of the text, and the rest of it as one more; one line per paragraph at least.
QStringList wrapped(const QString& text, int width, int most) {
  QStringList lines;
  for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
    QTextLayout layout(paragraph, notesFont());
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    int begin = 0;
    do {
      QTextLine line = layout.createLine();
      if (!line.isValid()) break;
      line.setLineWidth(width);
      const bool isLast = lines.size() == most;
      lines += isLast ? paragraph.mid(begin) : paragraph.mid(begin, line.textLength()).trimmed();
      if (isLast) break;
      begin = line.textStart() + line.textLength();
    } while (begin < paragraph.size());
    layout.endLayout();
  }
  return lines;
}

}  // namespace

PresetNotes::PresetNotes(const TuningPreset& preset, QWidget* parent)
    : QLabel(parent),
      all_(quorvane::text(safeLines(preset.notes)).trimmed()),
      link_(new TextLink(QStringLiteral("More"), this)) {
  setTextFormat(Qt::PlainText);
  setText(quorvane::text(oneLine(preset.notes)));
  setAccessibleName(text());
  setFont(notesFont());
  setForegroundRole(QPalette::Dark);
  link_->setObjectName(QStringLiteral("moreNotesLink"));
  link_->setFocusPolicy(Qt::ClickFocus);
  link_->setAccessibleName(
      QStringLiteral("More notes, %1").arg(quorvane::text(oneLine(preset.name))));
  link_->hide();
  connect(link_, &TextLink::clicked, this, &PresetNotes::toggle);
}

int PresetNotes::advanceOf(const TuningPreset& preset) {
  if (preset.notes.empty()) return 0;
  return QFontMetrics(notesFont()).horizontalAdvance(quorvane::text(oneLine(preset.notes)));
}

int PresetNotes::heightOf(int advance, int width) {
  if (advance == 0) return 0;
  return (advance <= width ? 1 : foldedLines) * QFontMetrics(notesFont()).height();
}

void PresetNotes::highlight(const QStringList& words) {
  if (words == hits_) return;
  hits_ = words;
  update();
}

void PresetNotes::toggle() {
  isUnfolded_ = !isUnfolded_;
  link_->setText(isUnfolded_ ? QStringLiteral("Less") : QStringLiteral("More"));
  emit toggled();
}

// When they are unfolded, the last line has room for the link.
QStringList PresetNotes::linesFor(int width) const {
  if (!isUnfolded_) return wrapped(text(), width, foldedLines);
  QStringList lines = wrapped(all_, width, std::numeric_limits<int>::max());
  const int needed = fontMetrics().horizontalAdvance(lines.last()) + linkGap;
  if (needed + link_->sizeHint().width() > width) lines += QString();
  return lines;
}

int PresetNotes::heightForWidth(int width) const {
  if (!isUnfolded_) return heightOf(fontMetrics().horizontalAdvance(text()), width);
  return static_cast<int>(linesFor(width).size()) * fontMetrics().height();
}

void PresetNotes::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  placeLink();
}

void PresetNotes::placeLink() {
  lines_ = linesFor(width());
  const bool isClipped = !isUnfolded_ && lines_.size() > foldedLines;
  link_->setVisible(isUnfolded_ || isClipped);
  const QSize size = link_->sizeHint();
  if (isClipped) {
    const QString rest = lines_[foldedLines - 1] + QLatin1Char(' ') + lines_[foldedLines];
    lines_ = {lines_[0],
              fontMetrics().elidedText(rest, Qt::ElideRight, width() - size.width() - linkGap)};
  }
  const int before = fontMetrics().horizontalAdvance(lines_.last());
  const QPoint corner(before + (before > 0 ? linkGap : 0),
                      static_cast<int>(lines_.size() - 1) * fontMetrics().height());
  link_->setGeometry(visualRect(*this, QRect(corner, size)));
}

void PresetNotes::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Normal, foregroundRole()));
  QRect line(0, 0, width(), fontMetrics().height());
  for (const QString& words : lines_) {
    if (!hits_.isEmpty()) {
      const int advance = fontMetrics().horizontalAdvance(words);
      drawHits(painter, firstPart(line, advance, layoutDirection()), words, hits_, font());
    }
    painter.drawText(line, lineFlags(words, Qt::AlignLeft, layoutDirection()), words);
    line.translate(0, line.height());
  }
}

}  // namespace quorvane
