#include "ui/kit/readout.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "ui/kit/metrics.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int numberMargin = 2;  // on each side

}  // namespace

// Shows the number and its unit in different fonts, except during typing.
class Readout::Edit final : public QLineEdit {
 public:
  explicit Edit(const Readout& readout) : readout_(readout) {
    setFrame(false);
    setAlignment(Qt::AlignCenter);
    setTextMargins(0, 0, 0, 0);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    if (hasFocus() && isModified()) return QLineEdit::paintEvent(event);
    const Theme& t = theme();
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight);
    const QString number =
        readout_.word_.isEmpty() ? QString::number(readout_.value()) : readout_.word_;
    const QString unit = readout_.word_.isEmpty() ? readout_.unit_ : QString();
    const QFont valueFont = Metrics::font(Metrics::Type::value);
    const QFont unitFont = Metrics::font(Metrics::Type::unit);
    const QFontMetrics valueMetrics(valueFont);
    const int numberWidth = textWidth(valueFont, number);
    const int unitWidth = unit.isEmpty() ? 0 : textWidth(unitFont, u' ' + unit);
    const int x = (width() - numberWidth - unitWidth) / 2;
    const int baseline = (height() + valueMetrics.ascent() - valueMetrics.descent()) / 2;
    painter.setFont(valueFont);
    painter.setPen(t.ink);
    painter.drawText(x, baseline, number);
    if (unitWidth == 0) return;
    painter.setFont(unitFont);
    painter.setPen(t.ink2);
    painter.drawText(x + numberWidth, baseline, u' ' + unit);
  }

 private:
  const Readout& readout_;
};

Readout::Readout(QWidget* parent) : QSpinBox(parent) {
  setLineEdit(new Edit(*this));
  setKeyboardTracking(false);
  setFocusPolicy(Qt::ClickFocus);
  setFont(Metrics::font(Metrics::Type::value));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  // Emitted only for changes by assistive technology; this class blocks it for its own.
  connect(this, &QSpinBox::valueChanged, this, &Readout::take);
}

void Readout::setScale(int lowest, int highest, int step, const QString& unit) {
  const QSignalBlocker silent(this);
  unit_ = unit;
  setRange(lowest, highest);
  setSingleStep(step);
}

void Readout::show(int value, const QString& word, Mark mark) {
  if (isEditing()) return;
  if (value == this->value() && word == word_ && mark == mark_) return;
  word_ = word;
  mark_ = mark;
  restoreTo(value);
}

bool Readout::isEditing() const { return lineEdit()->hasFocus() && lineEdit()->isModified(); }

void Readout::startTyping(const QString& begun) {
  setFocus(Qt::OtherFocusReason);
  lineEdit()->selectAll();
  if (begun.isEmpty()) return;
  lineEdit()->insert(begun);
  lineEdit()->setModified(true);
}

QSize Readout::sizeHint() const {
  const QFont font = Metrics::font(Metrics::Type::value);
  const int text = std::max(textWidth(font, number(minimum())), textWidth(font, number(maximum())));
  return {text + 2 * (Metrics::stepButton() + numberMargin),
          Metrics::atLeast(Metrics::rowControlHeight, font)};
}

QString Readout::textFromValue(int value) const { return word_.isEmpty() ? number(value) : word_; }

QString Readout::number(int value) const {
  return unit_.isEmpty() ? QString::number(value) : QString::number(value) + u' ' + unit_;
}

// Parses digits with an optional sign; ignores the rest, such as a unit.
int Readout::valueFromText(const QString& text) const {
  QString digits;
  for (const QChar c : text.trimmed()) {
    const bool isSign = digits.isEmpty() && (c == u'-' || c == u'\u2212' || c == u'+');
    if (!isSign && !c.isDigit()) break;
    digits += isSign && c != u'+' ? u'-' : c;
  }
  bool isNumber = false;
  const qlonglong number = digits.toLongLong(&isNumber);
  if (isNumber) return rounded(number);
  return value();
}

QValidator::State Readout::validate(QString& /*text*/, int& /*position*/) const {
  return QValidator::Acceptable;
}

int Readout::rounded(std::int64_t value) const {
  const std::int64_t kept = std::clamp<std::int64_t>(value, minimum(), maximum());
  const std::int64_t steps = std::llround(double(kept - minimum()) / singleStep());
  return static_cast<int>(
      std::clamp<std::int64_t>(minimum() + steps * singleStep(), minimum(), maximum()));
}

void Readout::stepBy(int steps) {
  const int before = value();
  restoreTo(std::clamp(before + steps * singleStep(), minimum(), maximum()));
  if (value() != before) emit chosen(value());
}

QAbstractSpinBox::StepEnabled Readout::stepEnabled() const {
  if (!word_.isEmpty()) return StepNone;
  return QSpinBox::stepEnabled();
}

void Readout::restoreTo(int value) {
  const QSignalBlocker silent(this);
  setValue(value);
  lineEdit()->setText(textFromValue(this->value()));
  lineEdit()->setModified(false);
  update();
}

void Readout::take(int value) {
  word_.clear();
  restoreTo(rounded(value));
  emit chosen(this->value());
}

void Readout::commit() {
  if (!lineEdit()->isModified()) return;
  const QString typed = lineEdit()->text();
  const int before = value();
  const bool wasSpecial = !word_.isEmpty();
  const bool isNumber = typed.contains(QRegularExpression(QStringLiteral("\\d")));
  const int number = valueFromText(typed);
  if (!isNumber || (number == before && !wasSpecial)) return restoreTo(before);
  take(number);
}

// Ctrl+Shift+Z is the shortcut of "Discard": keep the line edit from handling it as redo.
bool Readout::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Redo)) {
    event->ignore();
    return true;
  }
  return QSpinBox::event(event);
}

void Readout::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      commit();
      lineEdit()->selectAll();
      event->accept();
      emit finished();
      return;
    case Qt::Key_Escape:
      if (isEditing()) restoreTo(value());
      event->accept();
      emit finished();
      return;
    default:
      QSpinBox::keyPressEvent(event);
  }
}

void Readout::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QSpinBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

void Readout::focusOutEvent(QFocusEvent* event) {
  commit();
  QSpinBox::focusOutEvent(event);
  restoreTo(value());
}

}  // namespace quorvane
