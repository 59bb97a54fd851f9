#include "ui/kit/value_slider.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int trackHeight = 2;
constexpr int fillHeight = 4;
constexpr int graduationHeight = 3;
constexpr int graduationDrop = 7;  // from the middle of the track
constexpr int graduations = 4;
constexpr int capWidth = 10;
constexpr int capHeight = 18;
constexpr int capLine = 8;
constexpr int tickHeight = 14;
constexpr int ringMargin = Metrics::ringGap + Metrics::ringWidth;
constexpr int margin = capWidth / 2 + ringMargin;  // beside the track
constexpr int usualWidth = 200;
constexpr int leastWidth = 80;

}  // namespace

ValueSlider::ValueSlider(QWidget* parent) : QAbstractSlider(parent) {
  setOrientation(Qt::Horizontal);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(this, &QAbstractSlider::valueChanged, this, &ValueSlider::settle);
}

void ValueSlider::setScale(int lowest, int highest, int step) {
  const QScopedValueRollback showing(isShowing_, true);
  setRange(lowest, highest);
  setSingleStep(step);
  setPageStep(
      std::max(step, static_cast<int>(std::lround((highest - lowest) / 10.0 / step)) * step));
}

void ValueSlider::show(int value, std::optional<int> saved, Mark mark) {
  if (isSliderDown()) return;
  if (value == this->value() && saved == saved_ && mark == mark_ && !isSpecial_) return;
  isSpecial_ = false;
  mark_ = mark;
  saved_ = saved;
  const QScopedValueRollback showing(isShowing_, true);
  setValue(value);
  update();
}

void ValueSlider::showSpecial(int place) {
  if (isSpecial_ && value() == place) return;
  isSpecial_ = true;
  saved_.reset();
  const QScopedValueRollback showing(isShowing_, true);
  setValue(place);
  update();
}

QSize ValueSlider::sizeHint() const { return {usualWidth, Metrics::tuningRowHeight}; }

QSize ValueSlider::minimumSizeHint() const { return {leastWidth, Metrics::tuningRowHeight}; }

qreal ValueSlider::place(int value) const {
  const qreal width = this->width() - 2 * margin;
  if (maximum() <= minimum()) return margin;
  return margin +
         width * (std::clamp(value, minimum(), maximum()) - minimum()) / (maximum() - minimum());
}

int ValueSlider::rounded(int value) const {
  const int steps = static_cast<int>(std::lround((value - minimum()) / double(singleStep())));
  return std::clamp(minimum() + steps * singleStep(), minimum(), maximum());
}

// `x` is where it is drawn.
int ValueSlider::valueAt(qreal x) const {
  const qreal width = std::max(1, this->width() - 2 * margin);
  const qreal along = isRightToLeft() ? this->width() - x : x;
  const qreal part = std::clamp((along - margin) / width, 0.0, 1.0);
  return rounded(minimum() + static_cast<int>(std::lround(part * (maximum() - minimum()))));
}

QRect ValueSlider::capRect() const {
  const int left = static_cast<int>(std::lround(place(value()))) - capWidth / 2;
  return visualRect(*this, QRect(left, (height() - capHeight) / 2, capWidth, capHeight));
}

void ValueSlider::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const bool hovered = isEnabled() && underMouse();
  const qreal middle = height() / 2.0;
  const DevicePixels pixels(painter);
  const auto line = [&](qreal from, qreal to, int thickness, const QColor& colour) {
    const QRectF whole =
        pixels.placed(QRectF(margin, middle - thickness / 2.0, width() - 2 * margin, thickness));
    painter.setBrush(colour);
    painter.drawRoundedRect(visualRect(*this, QRectF(from, whole.top(), to - from, whole.height())),
                            whole.height() / 2, whole.height() / 2);
  };
  const auto upright = [&](const QRectF& bar, const QColor& colour) {
    drawBar(painter, visualRect(*this, bar), colour);
  };
  const QRectF cap = pixels.placed(capRect());
  if (isSpecial_) {  // the outline of the cap is empty
    const QRectF place = visualRect(*this, cap);
    if (place.left() > margin) line(margin, place.left(), trackHeight, t.track);
    if (place.right() < width() - margin)
      line(place.right(), width() - margin, trackHeight, t.track);
  } else {
    line(margin, width() - margin, trackHeight, hovered ? t.ink2 : t.track);
  }
  for (int i = 0; i <= graduations; ++i) {
    const qreal x = margin + (width() - 2.0 * margin) * i / graduations;
    upright(QRectF(std::floor(x - 0.5), middle + graduationDrop, 1, graduationHeight),
            t.graduation);
  }

  if (isSpecial_) {
    const qreal pen = pixels.length(1);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(t.capEdge, pen, Qt::DashLine));
    painter.drawRoundedRect(cap.adjusted(pen / 2, pen / 2, -pen / 2, -pen / 2),
                            Metrics::plateRadius, Metrics::plateRadius);
    return;
  }
  const qreal now = place(value());
  const bool isChanged = saved_ && *saved_ != value();
  const QColor marked = markColour(mark_, t.signal);
  const qreal before = isChanged ? place(*saved_) : now;
  line(margin, std::min(now, before), fillHeight, isEnabled() ? t.fill : t.graduation);
  if (isChanged) {
    line(std::min(now, before), std::max(now, before), fillHeight, marked);
    upright(QRectF(std::round(before) - 1, middle - tickHeight / 2.0, 2, tickHeight), t.ink);
  }
  QColor ground = isChanged ? marked : t.cap;
  QColor edge = isChanged ? marked : hovered ? t.capHoverEdge : t.capEdge;
  QColor hairline = isChanged ? onMark(mark_) : t.isDark ? t.surface : t.capEdge;
  if (t.isDark && hovered && !isChanged) ground = t.capHoverEdge;
  if (!isEnabled()) {
    edge = hairline = t.graduation;
    if (!isChanged && t.isDark) ground = t.graduation;
  }
  drawBox(painter, cap, Metrics::plateRadius, ground, edge);
  painter.fillRect(pixels.centred(cap, 1, capLine), hairline);
}

void ValueSlider::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    event->ignore();
    return;
  }
  setSliderDown(true);
  drag(event->position().x());
}

void ValueSlider::mouseMoveEvent(QMouseEvent* event) {
  if (isSliderDown()) drag(event->position().x());
}

void ValueSlider::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !isSliderDown()) return;
  drag(event->position().x());
  setSliderDown(false);
  emit chosen(value());
}

void ValueSlider::drag(qreal x) {
  const int value = valueAt(x);
  if (isSpecial_) isSpecial_ = false;
  setValue(value);
  update();
  emit dragged(value);
}

void ValueSlider::choose(int value) { setValue(std::clamp(value, minimum(), maximum())); }

// Rounds and emits a value set by a key or by assistive technology.
void ValueSlider::settle(int value) {
  if (isShowing_ || isSliderDown()) return;
  const QScopedValueRollback showing(isShowing_, true);
  setValue(rounded(value));
  emit chosen(this->value());
}

void ValueSlider::keyPressEvent(QKeyEvent* event) {
  const bool mirrored = isRightToLeft();
  switch (event->key()) {
    case Qt::Key_Left:
      return choose(value() + (mirrored ? singleStep() : -singleStep()));
    case Qt::Key_Right:
      return choose(value() + (mirrored ? -singleStep() : singleStep()));
    case Qt::Key_Down:
      return choose(value() - singleStep());
    case Qt::Key_Up:
      return choose(value() + singleStep());
    case Qt::Key_PageDown:
      return choose(value() - pageStep());
    case Qt::Key_PageUp:
      return choose(value() + pageStep());
    case Qt::Key_Home:
      return choose(minimum());
    case Qt::Key_End:
      return choose(maximum());
    default:
      event->ignore();
  }
}

// Without the keyboard focus, the event is ignored so that the page scrolls.
void ValueSlider::wheelEvent(QWheelEvent* event) {
  const int turn = event->angleDelta().y();
  if (!hasFocus() || turn == 0) {
    event->ignore();
    return;
  }
  choose(value() + (turn > 0 ? singleStep() : -singleStep()));
  event->accept();
}

void ValueSlider::changeEvent(QEvent* event) {
  if (event->type() == QEvent::EnabledChange) update();
  QAbstractSlider::changeEvent(event);
}

}  // namespace quorvane
