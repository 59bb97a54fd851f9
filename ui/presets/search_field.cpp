#include "ui/presets/search_field.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int searchWidth = 240;
constexpr int lensInset = 9;
constexpr int textInset = 28;

}  // namespace

SearchField::SearchField(QWidget* parent)
    : QLineEdit(parent), clear_(new IconButton(QStringLiteral("xmark"), false, this)) {
  setObjectName(QStringLiteral("presetSearchField"));
  setAccessibleName(QStringLiteral("Search presets"));
  setPlaceholderText(QStringLiteral("Search presets"));
  PlainText::setToolTip(
      *this, QStringLiteral("Name, game, source, notes, or a value such as FF=80 (Ctrl+F)"));
  setTextMargins(textInset, 0, textInset, 0);
  clear_->setObjectName(QStringLiteral("clearSearchButton"));
  clear_->setAccessibleName(QStringLiteral("Clear the search"));
  PlainText::setToolTip(*clear_, QStringLiteral("Clear the search (Esc)"));
  clear_->setFocusPolicy(Qt::NoFocus);
  clear_->setCursor(Qt::ArrowCursor);
  clear_->hide();
  connect(clear_, &IconButton::clicked, this, &QLineEdit::clear);
  connect(this, &QLineEdit::textChanged, clear_,
          [this](const QString& words) { clear_->setVisible(!words.isEmpty()); });
}

QSize SearchField::sizeHint() const {
  return {searchWidth, Metrics::atLeast(Metrics::buttonHeight, font())};
}

void SearchField::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) {
    QLineEdit::keyPressEvent(event);
  } else if (text().isEmpty()) {
    emit left();
  } else {
    clear();
  }
}

void SearchField::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  clear_->setGeometry(visualRect(*this, QRect(width() - height(), 0, height(), height())));
}

void SearchField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  const qreal top = (height() - Metrics::symbolSize) / 2.0;
  const QRectF lens(lensInset, top, Metrics::symbolSize, Metrics::symbolSize);
  drawSymbol(painter, visualRect(*this, lens).topLeft(), QStringLiteral("magnifyingglass"),
             Metrics::symbolSize, theme().ink2);
}

}  // namespace quorvane
