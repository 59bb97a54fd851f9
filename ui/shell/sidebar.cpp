#include "ui/shell/sidebar.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QPainter>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/kit/link_row.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/shared_tab_stop.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/addresses.h"

namespace quorvane {
namespace {

constexpr int rowInset = 8;
constexpr int sectionSymbol = 18;
constexpr int symbolInset = 10;
constexpr int symbolGap = 10;
constexpr int markWidth = 3;
constexpr int markHeight = 18;
constexpr int firstRowTop = 10;
constexpr int rowSpacing = 2;
constexpr int linkInset = 12;
constexpr int linkSpacing = 6;
constexpr int pillPadding = 7;

}  // namespace

class SidebarRow final : public QAbstractButton {
 public:
  explicit SidebarRow(Section section, QWidget* parent)
      : QAbstractButton(parent), section_(section) {
    setText(text(rawValue(section)));
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setObjectName(QStringLiteral("section") + text());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setCount(0);
  }

  // Shows the number of unsaved edits.
  void setCount(std::size_t count) {
    count_ = count;
    setAccessibleName(
        count == 0 ? QAbstractButton::text()
                   : QStringLiteral("%1, %2 unsaved").arg(QAbstractButton::text()).arg(count));
    update();
  }

  QSize sizeHint() const override {
    return {Metrics::sidebarMinimum - 2 * rowInset,
            Metrics::atLeast(Metrics::sidebarRowHeight, Metrics::font(Metrics::Type::body))};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const Theme& t = theme();
    QPainter painter(this);
    const bool chosen = isChecked();
    if (chosen || underMouse()) {
      drawBox(painter, rect(), Metrics::controlRadius, chosen ? t.selection : t.hover, QColor());
    }
    if (chosen) {
      const QRectF mark(0, (height() - markHeight) / 2.0, markWidth, markHeight);
      drawBar(painter, visualRect(*this, mark), t.brandEdge);
    }
    const QColor ink = chosen ? t.brandText : t.ink2;
    const QRectF symbol(symbolInset, (height() - sectionSymbol) / 2.0, sectionSymbol,
                        sectionSymbol);
    drawSymbol(painter, visualRect(*this, symbol).topLeft(), text(symbolName(section_)),
               sectionSymbol, ink);
    painter.setFont(Metrics::font(chosen ? Metrics::Type::value : Metrics::Type::body));
    painter.setPen(t.ink);
    const QRect title = rect().adjusted(symbolInset + sectionSymbol + symbolGap, 0, 0, 0);
    painter.drawText(visualRect(*this, title), Qt::AlignLeft | Qt::AlignVCenter,
                     QAbstractButton::text());
    if (count_ > 0) drawPill(painter);
  }

 private:
  using QAbstractButton::text;
  static QString text(std::string_view utf8) { return quorvane::text(utf8); }

  void drawPill(QPainter& painter) const {
    const Theme& t = theme();
    const QString number = QString::number(count_);
    const QFont font = Metrics::font(Metrics::Type::pill);
    const QFontMetrics metrics(font);
    const int pillHeight = std::max(Metrics::pillHeight, metrics.height() + 2);
    const int width = std::max(pillHeight, metrics.horizontalAdvance(number) + 2 * pillPadding - 4);
    const QRect pill = visualRect(*this, QRect(this->width() - symbolInset - width,
                                               (height() - pillHeight) / 2, width, pillHeight));
    drawBox(painter, pill, pillHeight / 2.0, t.pill, QColor());
    painter.setFont(font);
    painter.setPen(t.brandText);
    painter.drawText(pill, Qt::AlignCenter, number);
  }

  const Section section_;
  std::size_t count_ = 0;
};

Sidebar::Sidebar(AppModel& model, QWidget* parent) : View(model, parent) {
  setObjectName(QStringLiteral("sidebar"));
  setAccessibleName(QStringLiteral("Sections"));
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, firstRowTop, 0, linkInset);
  column->setSpacing(rowSpacing);
  for (std::size_t i = 0; i < allSections.size(); ++i) {
    auto* const row = new SidebarRow(allSections[i], this);
    rows_[i] = row;
    auto* const line = new QHBoxLayout;
    line->setContentsMargins(rowInset, 0, rowInset, 0);
    line->addWidget(row);
    column->addLayout(line);
    connect(row, &QAbstractButton::toggled, this, [this, i](bool on) {
      if (on) emit chosen(allSections[i]);
    });
  }
  column->addStretch();
  column->addSpacing(linkInset + linkSpacing);
  auto* const links = new QVBoxLayout;
  links->setContentsMargins(linkInset, 0, linkInset, 0);
  links->setSpacing(linkSpacing);
  auto* const support =
      new LinkRow(QStringLiteral("heart"), QStringLiteral("Support the firmware work"),
                  Addresses::firmwareSupport(), QStringLiteral("supportLink"));
  auto* const website = new LinkRow(QStringLiteral("safari"), Addresses::website().host(),
                                    Addresses::website(), QStringLiteral("websiteLink"));
  links->addWidget(support);
  links->addWidget(website);
  new SharedTabStop({support, website}, this);
  column->addLayout(links);
}

// Only the chosen row is a Tab stop; the arrow keys move to the others.
void Sidebar::setSection(Section section) {
  SidebarRow* const chosen = rows_[static_cast<std::size_t>(section)];
  for (SidebarRow* const row : rows_) {
    row->setFocusPolicy(row == chosen ? Qt::StrongFocus : Qt::ClickFocus);
  }
  const QSignalBlocker silent(chosen);
  chosen->setChecked(true);
}

void Sidebar::render() {
  rows_[static_cast<std::size_t>(Section::tuning)]->setCount(model().staged().size());
}

void Sidebar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.sidebar);
  drawEdge(painter, rect(), layoutDirection() == Qt::LeftToRight ? Qt::RightEdge : Qt::LeftEdge,
           t.line);
  const int divider = layout()->itemAt(layout()->count() - 1)->geometry().top() - linkInset;
  drawEdge(painter, QRect(0, divider, width(), 1), Qt::TopEdge, t.line);
}

}  // namespace quorvane
