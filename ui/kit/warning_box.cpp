#include "ui/kit/warning_box.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int warningSymbol = 20;
constexpr int boxInset = 12;

}  // namespace

WarningBox::WarningBox(const QString& heading, const QString& body, QWidget* parent)
    : QWidget(parent) {
  setObjectName(QStringLiteral("warningBox"));
  setAccessibleName(QStringLiteral("Warning: ") + heading);
  setAccessibleDescription(body);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(
      visualMargins(*this, {boxInset + warningSymbol + boxInset, boxInset, boxInset, boxInset}));
  column->setSpacing(2);
  QLabel* const head = PlainText::label(heading);
  head->setObjectName(QStringLiteral("warningHeading"));
  head->setFont(Metrics::font(Metrics::Type::value));
  head->setWordWrap(true);
  QLabel* const text = PlainText::label(body);
  text->setObjectName(QStringLiteral("warningBody"));
  text->setFont(Metrics::font(Metrics::Type::callout));
  text->setForegroundRole(QPalette::Dark);
  text->setWordWrap(true);
  column->addWidget(head);
  column->addWidget(text);
}

void WarningBox::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  drawBox(painter, rect(), Metrics::cardRadius, t.warningGround, t.warningLine);
  const QRectF symbol(boxInset, boxInset, warningSymbol, warningSymbol);
  drawSymbol(painter, visualRect(*this, symbol).topLeft(),
             QStringLiteral("exclamationmark.triangle.fill"), warningSymbol, t.warningIcon);
}

}  // namespace quorvane
