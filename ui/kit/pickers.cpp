#include "ui/kit/pickers.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <QPainter>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int textPadding = 10;
constexpr int arrowRoom = 34;
constexpr int segmentPadding = 12;

// One of the joined buttons: a radio button, painted as a segment of the group.
class Segment final : public QRadioButton {
 public:
  Segment(const QString& title, const Segments& group) : QRadioButton(title), group_(group) {
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }

  QSize sizeHint() const override {
    const QFont font = Metrics::font(Metrics::Type::value);
    return {textWidth(font, text()) + 2 * segmentPadding,
            Metrics::atLeast(Metrics::rowControlHeight, font)};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool hitButton(const QPoint& position) const override { return rect().contains(position); }

  void paintEvent(QPaintEvent* /*event*/) override {
    const Theme& t = theme();
    QPainter painter(this);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const QRadioButton* const first = group_.buttons().front();
    const QRadioButton* const last = group_.buttons().back();
    const bool isFirst = (isMirrored ? last : first) == this;  // from the left
    const bool isLast = (isMirrored ? first : last) == this;
    // Only the outer ends are round: the box of a segment extends beyond its joints and is clipped.
    const int beyond = 2 * Metrics::controlRadius;
    const QRect box = rect().adjusted(isFirst ? 0 : -beyond, 0, isLast ? 0 : beyond, 0);
    QColor ground = isChecked() ? t.selection : underMouse() && isEnabled() ? t.hover : t.surface;
    const QColor border = markColour(group_.mark(), isEnabled() ? t.edge : t.line);
    drawBox(painter, box, Metrics::controlRadius, ground, border);
    if (!isFirst) drawEdge(painter, rect(), Qt::LeftEdge, border);
    painter.setFont(Metrics::font(isChecked() ? Metrics::Type::value : Metrics::Type::body));
    painter.setPen(isChecked() ? t.ink : isEnabled() ? t.ink2 : t.inkDisabled);
    painter.drawText(rect(), Qt::AlignCenter, text());
  }

 private:
  const Segments& group_;
};

}  // namespace

Picker::Picker(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QComboBox::activated, this,
          [this](int index) { emit chosen(choices_[static_cast<std::size_t>(index)].value); });
}

void Picker::setChoices(const std::vector<Choice>& choices) {
  if (choices == choices_) return;
  const QSignalBlocker silent(this);
  choices_ = choices;
  clear();
  for (const Choice& choice : choices_) addItem(choice.title, choice.value);
  updateGeometry();
}

void Picker::show(int value, Mark mark) {
  if (view()->isVisible()) return;
  const QSignalBlocker silent(this);
  setCurrentIndex(findData(value));
  if (mark_ == mark) return;
  mark_ = mark;
  update();
}

QSize Picker::sizeHint() const {
  int widest = 0;
  for (const Choice& choice : choices_) {
    widest = std::max(widest, textWidth(font(), choice.title));
  }
  return {widest + textPadding + arrowRoom, Metrics::atLeast(Metrics::buttonHeight, font())};
}

void Picker::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

Segments::Segments(std::vector<Choice> choices, QWidget* parent)
    : QWidget(parent), choices_(std::move(choices)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  for (const Choice& choice : choices_) {
    auto* const button = new Segment(choice.title, *this);
    buttons_.push_back(button);
    row->addWidget(button);
    connect(button, &QRadioButton::toggled, this, [this, value = choice.value](bool on) {
      if (on) emit chosen(value);
    });
  }
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Segments::show(int value, Mark mark) {
  mark_ = mark;
  const bool hasFocus = std::any_of(buttons_.begin(), buttons_.end(),
                                    [](const QRadioButton* button) { return button->hasFocus(); });
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    const QSignalBlocker silent(buttons_[i]);
    // The chosen one is the group's Tab stop.
    const bool isChosen = choices_[i].value == value;
    buttons_[i]->setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus);
    if (isChosen) {
      buttons_[i]->setChecked(true);
      if (hasFocus) buttons_[i]->setFocus(Qt::OtherFocusReason);
    }
    buttons_[i]->update();
  }
}

}  // namespace quorvane
