#include "ui/history/not_as_left_bar.h"

#include <QLabel>

#include "ui/kit/button.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/theme.h"
#include "ui/kit/warning_bar.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int asLeftHeight = 45;
constexpr int lastLineHeight = 42;
constexpr int asLeftGap = 4;

}  // namespace

NotAsLeftBar::NotAsLeftBar(AppModel& model, AsLeft& asLeft, Place place, QWidget* parent)
    : NoticeBar(
          model,
          {place == Place::own ? asLeftHeight : lastLineHeight, asLeftGap, Metrics::Type::body},
          parent),
      asLeft_(asLeft),
      place_(place),
      compare_(new Button(QStringLiteral("Compare…"))),
      fillIn_(new Button(QStringLiteral("Fill them in"))),
      close_(new IconButton(QStringLiteral("xmark"))) {
  const QString name =
      place == Place::own ? QStringLiteral("notAsLeft") : QStringLiteral("notAsLeftInSetA");
  setObjectName(name + QStringLiteral("Bar"));
  setAccessibleName(QStringLiteral("Not as you left it"));
  strong().setObjectName(name + QStringLiteral("Title"));
  quiet().setObjectName(name + QStringLiteral("Note"));
  compare_->setObjectName(name + QStringLiteral("CompareButton"));
  PlainText::setToolTip(*compare_, QStringLiteral("Compare what you left with the base"));
  fillIn_->setObjectName(name + QStringLiteral("FillInButton"));
  close_->setObjectName(name + QStringLiteral("CloseButton"));
  close_->setAccessibleName(QStringLiteral("Dismiss"));
  PlainText::setToolTip(*close_, QStringLiteral("Say no more about it until the next save"));
  addButton(compare_);
  addButton(fillIn_);
  addButton(close_);
  connect(compare_, &Button::clicked, &asLeft_, &AsLeft::compare);
  connect(fillIn_, &Button::clicked, &asLeft_, &AsLeft::fillIn);
  connect(close_, &IconButton::clicked, &asLeft_, &AsLeft::dismiss);
  connect(&asLeft_, &AsLeft::ended, this, &Bar::wantedChanged);
}

void NotAsLeftBar::render() {
  if (!isWanted()) return;
  const auto now = WallClock::now();
  setTexts(asLeft_.title(), place_ == Place::own ? asLeft_.note(now) : asLeft_.noteInSetA(now));
  setAvailable(*fillIn_, whyNotNow(model()),
               QStringLiteral("Stage the values as you left them; nothing is written yet"));
  place();
}

NoticeBar::Look NotAsLeftBar::look() const {
  const Theme& t = theme();
  if (place_ == Place::inWarning) {
    return {t.warningGround, t.warningLine, Qt::BottomEdge, {}, WarningBar::textIndent};
  }
  return {t.window, t.line, Qt::BottomEdge, {{}, t.fill}};
}

}  // namespace quorvane
