#include "ui/kit/form.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int hexLabelColumn = 80;
constexpr int captionInset = 2;
constexpr int captionGap = 6;
constexpr int wellInset = 10;
constexpr int rowPadding = 6;
constexpr int buttonPadding = 10;
constexpr int explanationGap = 6;
constexpr int widestExplanation = 760;

constexpr Qt::TextInteractionFlags selectable =
    Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;

// A text that wraps at its maximum width even if there is more room.
class Paragraph final : public QLabel {
 public:
  explicit Paragraph(const QString& text) {
    setTextFormat(Qt::PlainText);
    setText(text);
    setWordWrap(true);
  }

  int heightForWidth(int width) const override {
    return QLabel::heightForWidth(std::min(width, maximumWidth()));
  }
};

// The background of a text in a fixed font.
class Well final : public QWidget {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    drawBox(painter, rect(), Metrics::plateRadius, theme().hexWell, QColor());
  }
};

}  // namespace

QLabel* selectableLabel(const QString& objectName) {
  QLabel* const label = PlainText::label();
  label->setObjectName(objectName);
  label->setTextInteractionFlags(selectable);
  label->setFocusPolicy(Qt::StrongFocus);
  label->setWordWrap(true);
  return label;
}

QWidget* sunken(QLabel* label) {
  auto* const well = new Well;
  auto* const inner = new QVBoxLayout(well);
  inner->setContentsMargins(wellInset, rowPadding, wellInset, rowPadding);
  label->setFont(Metrics::font(Metrics::Type::fixed));
  label->setAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
  inner->addWidget(label);
  return well;
}

class Card::Body final : public QWidget {
 public:
  Body() : column_(new QVBoxLayout(this)) {
    column_->setContentsMargins(1, 1, 1, 1);
    column_->setSpacing(1);
  }

  int rowCount() const { return column_->count(); }
  QWidget* row(int number) const { return column_->itemAt(number)->widget(); }
  void insert(int number, QWidget* row) { column_->insertWidget(number, row); }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const Theme& t = theme();
    QPainter painter(this);
    drawBox(painter, rect(), Metrics::cardRadius, t.surface, t.line);
    bool isFirst = true;
    for (int i = 0; i < column_->count(); ++i) {
      const QWidget* const shown = row(i);
      if (shown == nullptr || shown->isHidden()) continue;
      if (!isFirst) {
        drawEdge(painter, QRect(1, 0, width() - 2, shown->y()), Qt::BottomEdge, t.hairline);
      }
      isFirst = false;
    }
  }

 private:
  QVBoxLayout* column_;
};

Card::Card(const QString& caption, QWidget* parent) : QWidget(parent), body_(new Body) {
  setAccessibleName(caption);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(captionGap);
  QLabel* const label = PlainText::label(caption);
  label->setFont(Metrics::font(Metrics::Type::caption));
  label->setForegroundRole(QPalette::Dark);
  label->setContentsMargins(captionInset, 0, 0, 0);
  column->addWidget(label);
  column->addWidget(body_);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void Card::add(QWidget* row) { insert(body_->rowCount(), row); }

void Card::insert(int number, QWidget* row) {
  body_->insert(number, row);
  row->installEventFilter(this);
}

std::vector<QWidget*> Card::rows() const {
  std::vector<QWidget*> rows;
  rows.reserve(static_cast<std::size_t>(body_->rowCount()));
  for (int i = 0; i < body_->rowCount(); ++i) rows.push_back(body_->row(i));
  return rows;
}

bool Card::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
    body_->update();
  }
  return false;
}

FormRow::FormRow(const QString& label, const QString& objectName, QWidget* parent)
    : QWidget(parent), label_(PlainText::label(label)), value_(selectableLabel(objectName)) {
  auto* const row = new QHBoxLayout(this);
  const int padding = std::max(rowPadding, (Metrics::formRowHeight - fontMetrics().height()) / 2);
  row->setContentsMargins(Metrics::cardInset, padding, Metrics::cardInset, padding);
  row->setSpacing(Metrics::gap);
  label_->setForegroundRole(QPalette::Dark);
  label_->setFixedWidth(Metrics::labelColumn);
  label_->setBuddy(value_);
  row->addWidget(label_, 0, Qt::AlignTop);
  row->addWidget(value_, 1, Qt::AlignTop);
}

void FormRow::setValue(const QString& value) {
  if (value == value_->text()) return;
  value_->setText(value);
  value_->setAccessibleName(QStringLiteral("%1, %2").arg(label_->text(), value));
}

QString FormRow::value() const { return value_->text(); }

QWidget* buttonRow(Button* button, const QString& explanation) {
  return buttonsRow({button}, explanation);
}

QWidget* buttonsRow(const std::vector<Button*>& buttons, const QString& explanation) {
  auto* const row = new QWidget;
  auto* const column = new QVBoxLayout(row);
  column->setContentsMargins(Metrics::cardInset, buttonPadding, Metrics::cardInset, buttonPadding);
  column->setSpacing(explanationGap);
  auto* const line = new QHBoxLayout;
  line->setSpacing(Metrics::gap);
  for (Button* const button : buttons) line->addWidget(button);
  line->addStretch();
  column->addLayout(line);
  if (explanation.isEmpty()) return row;
  auto* const text = new Paragraph(explanation);
  text->setFont(Metrics::font(Metrics::Type::callout));
  text->setForegroundRole(QPalette::Dark);
  text->setMaximumWidth(widestExplanation);
  column->addWidget(text);
  return row;
}

QLabel* messageRow(const QString& text, const QString& objectName) {
  QLabel* const label = PlainText::label(text);
  label->setObjectName(objectName);
  label->setForegroundRole(QPalette::Dark);
  label->setWordWrap(true);
  label->setContentsMargins(Metrics::cardInset, rowPadding, Metrics::cardInset, rowPadding);
  label->setMinimumHeight(Metrics::formRowHeight);
  return label;
}

HexRow::HexRow(const QString& label, const QString& objectName, QWidget* parent)
    : QWidget(parent), label_(label), bytes_(selectableLabel(objectName)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(Metrics::cardInset, wellInset, Metrics::cardInset, wellInset);
  row->setSpacing(0);
  QLabel* const title = PlainText::label(label);
  title->setForegroundRole(QPalette::Dark);
  title->setFixedWidth(hexLabelColumn);
  title->setContentsMargins(0, wellInset / 2, 0, 0);
  row->addWidget(title, 0, Qt::AlignTop);
  row->addWidget(sunken(bytes_), 1);
}

void HexRow::setValue(const QString& bytes) {
  if (bytes == bytes_->text()) return;
  bytes_->setText(bytes);
  bytes_->setAccessibleName(QStringLiteral("%1, %2").arg(label_, bytes));
}

PageHeader::PageHeader(const QString& title, QWidget* parent)
    : QWidget(parent), title_(PlainText::label(title, this)) {
  title_->setFont(Metrics::font(Metrics::Type::pageTitle));
  title_->setObjectName(QStringLiteral("pageTitle"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize PageHeader::sizeHint() const {
  return {0, Metrics::atLeast(Metrics::headerHeight, title_->font())};
}

void PageHeader::add(QWidget* control) {
  control->setParent(this);
  controls_.push_back(control);
}

void PageHeader::resizeEvent(QResizeEvent* /*event*/) {
  const int inset = Metrics::inset(*this);
  title_->setGeometry(inset, 0, width() - 2 * inset, height());
  int right = width() - inset;
  std::for_each(controls_.rbegin(), controls_.rend(), [&](QWidget* control) {
    const QSize size = control->sizeHint().expandedTo(control->minimumSize());
    right -= size.width();
    control->setGeometry(visualRect(
        *this, QRect(right, (height() - size.height()) / 2, size.width(), size.height())));
    right -= Metrics::pageInset;
  });
}

void PageHeader::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), theme().window);
  drawEdge(painter, rect(), Qt::BottomEdge, theme().line);
}

FormPage::FormPage(const QString& title, int widestCard, int cardGap, QWidget* parent)
    : QWidget(parent),
      widestCard_(widestCard),
      cardGap_(cardGap),
      column_(new QVBoxLayout),
      scroll_(new QScrollArea) {
  column_->setSpacing(cardGap_);
  column_->addStretch();
  auto* const cards = new QWidget;
  cards->setLayout(column_);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll_->setFocusPolicy(Qt::NoFocus);
  scroll_->setWidget(cards);
  auto* const outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->setSpacing(0);
  outer->addWidget(new PageHeader(title));
  outer->addWidget(scroll_, 1);
}

void FormPage::centreInWideWindows() { centresCards_ = true; }

void FormPage::add(Card* card) {
  column_->insertWidget(column_->count() - 1, card);
  card->setMaximumWidth(widestCard_);
}

void FormPage::resizeEvent(QResizeEvent* /*event*/) {
  const bool isCentred = centresCards_ && window()->width() >= Metrics::wideFrom;
  const int side = std::max(Metrics::inset(*this), isCentred ? (width() - widestCard_) / 2 : 0);
  column_->setContentsMargins(side, cardGap_, side, cardGap_);
}

}  // namespace quorvane
