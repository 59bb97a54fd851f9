#include "ui/tuning/tuning_page.h"

#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/tab_order.h"
#include "ui/model/availability.h"
#include "ui/model/bar.h"
#include "ui/tuning/parameter_row.h"
#include "ui/tuning/row_layout.h"
#include "ui/tuning/setting_help_panel.h"
#include "ui/tuning/setting_help_popup.h"
#include "ui/tuning/tuning_header.h"

namespace quorvane {
namespace {

constexpr int pointingTime = 300;     // milliseconds
constexpr int roomBelowMessage = 44;  // for the window's own button

}  // namespace

TuningPage::TuningPage(AppModel& model, QWidget* parent)
    : View(model, parent),
      message_(PlainText::label()),
      content_(new QWidget),
      header_(new TuningHeader(model)),
      barsAbove_(new BarPlace(model)),
      list_(new QScrollArea),
      barsBelow_(new BarPlace(model)) {
  setObjectName(QStringLiteral("tuningPage"));
  setAccessibleName(QStringLiteral("Tuning menu"));
  message_->setObjectName(QStringLiteral("tuningMessage"));
  message_->setAlignment(Qt::AlignCenter);
  message_->setFont([] {
    QFont font = Metrics::font(Metrics::Type::dialogTitle);
    font.setWeight(QFont::Normal);
    return font;
  }());
  message_->setForegroundRole(QPalette::Dark);
  message_->setWordWrap(true);
  message_->setBackgroundRole(QPalette::Base);
  message_->setAutoFillBackground(true);

  auto* const rows = new QWidget;
  rows->setBackgroundRole(QPalette::Base);
  rows->setAutoFillBackground(true);
  column_ = new QVBoxLayout(rows);
  column_->setContentsMargins(0, 0, 0, 0);
  column_->setSpacing(0);
  column_->addStretch();
  list_->setObjectName(QStringLiteral("parameterList"));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setWidgetResizable(true);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setWidget(rows);

  auto* const inner = new QVBoxLayout(content_);
  inner->setContentsMargins(0, 0, 0, 0);
  inner->setSpacing(0);
  inner->addWidget(header_);
  inner->addWidget(barsAbove_);
  inner->addWidget(list_, 1);
  inner->addWidget(barsBelow_);
  auto* const outer = new QHBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  outer->setSpacing(0);
  outer->addWidget(message_, 1);
  outer->addWidget(content_, 1);
  list_->installEventFilter(this);
  connect(&model, &AppModel::menuChangedAtBase, this, &TuningPage::noteChanges);
  connect(&model, &AppModel::valueTaken, this, &TuningPage::noteTaken);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*before*/, QWidget* now) { focusMoved(now); });
  connect(barsAbove_, &BarPlace::barChanged, this, &TuningPage::fitRows);
  for (const BarPlace* const place : {barsAbove_, barsBelow_}) {
    connect(place, &BarPlace::focusLeft, this, &TuningPage::returnToRow);
  }
  content_->hide();
}

// A row that is deleted with the focus moves it, when the members here are gone already.
TuningPage::~TuningPage() { disconnect(qApp, nullptr, this, nullptr); }

const QWidget& TuningPage::mainPart() const { return *list_; }

QRect TuningPage::messageRect() const {
  const QRect place = message_->contentsRect();
  const QRect text = message_->fontMetrics().boundingRect(place, Qt::AlignCenter | Qt::TextWordWrap,
                                                          message_->text());
  return text.translated(message_->mapTo(this, QPoint()));
}

void TuningPage::render() {
  const auto& menu = model().tuning();
  const bool hasMenu = model().isConnected() && menu;
  message_->setText(model().isConnected()
                        ? QStringLiteral("Waiting for the tuning menu…")
                        : QStringLiteral("Connect a base to edit its tuning menu."));
  message_->setContentsMargins(0, 0, 0, model().isConnected() ? 0 : roomBelowMessage);
  message_->setVisible(!hasMenu);
  if (hasMenu) renderRows(*menu);
  content_->setVisible(hasMenu);
  renderHelp();
}

void TuningPage::focusNeighbour(const ParameterRow* row, bool next) {
  const auto place = std::ranges::find(rows_, row) - rows_.begin() + (next ? 1 : -1);
  if (place < 0 || place >= std::ssize(rows_)) return;
  ParameterRow* const neighbour = rows_[static_cast<std::size_t>(place)];
  neighbour->takeFocus();
  list_->ensureWidgetVisible(neighbour, 0, 0);
}

void TuningPage::setShowsHelp(bool shows) {
  showsHelp_ = shows;
  renderHelp();
}

void TuningPage::focusMoved(QWidget* now) {
  const bool isInList = now != nullptr && list_->isAncestorOf(now);
  if (isInList) lastEdited_ = now;
  ParameterRow* row = nullptr;
  for (ParameterRow* const each : rows_) {
    if (isInList && (each == now || each->isAncestorOf(now))) row = each;
  }
  if (row == focusedRow_) return;
  if (focusedRow_) focusedRow_->setCurrent(false);
  focusedRow_ = row;
  if (row == nullptr) return;
  row->setCurrent(true);
  explain(row->parameter());
}

// A row that is pointed at for a moment is explained while no row has the focus.
void TuningPage::rowPointed(ParameterRow* row, bool isOver) {
  if (isOver) {
    pointedRow_ = row;
    pointing_.start(pointingTime, this);
  } else if (row == pointedRow_) {
    pointing_.stop();
  }
}

void TuningPage::timerEvent(QTimerEvent* event) {
  if (event->timerId() != pointing_.timerId()) return;
  pointing_.stop();
  if (pointedRow_ && !focusedRow_) explain(pointedRow_->parameter());
}

void TuningPage::explain(TuningParameter parameter) {
  explained_ = parameter;
  if (help_ != nullptr) help_->explain(parameter);
}

// The panel stands beside the list where the window is wide enough; it is created when it is shown
// for the first time. At first it explains the first row.
void TuningPage::renderHelp() {
  const bool shows = showsHelp_ && !content_->isHidden() && window()->width() >= Metrics::wideFrom;
  if (shows && help_ == nullptr) {
    help_ = new SettingHelpPanel(model());
    layout()->addWidget(help_);
    explain(explained_.value_or(rows_.front()->parameter()));
  }
  if (help_ != nullptr) help_->setVisible(shows);
  for (ParameterRow* const row : rows_) row->setExplainedBeside(shows);
  fitRows();
}

void TuningPage::measureRows() {
  needs_ = {};
  for (const ParameterRow* const row : rows_) needs_.include(row->needs());
  fitRows();
}

// Gives all rows the same columns. The room for a scroll bar is kept free, so that the columns do
// not depend on it. In a wide window rows are taller if all of them fit, also above a bar.
void TuningPage::fitRows() {
  const int width = list_->width() - list_->verticalScrollBar()->sizeHint().width();
  const RowLayout::Columns columns = RowLayout::columns(needs_, width, Metrics::inset(*this));
  const int room = list_->height() - (barsBelow_->shown() != nullptr ? 0 : barsBelow_->roomFor());
  const int wanted = RowLayout::roomyHeight * static_cast<int>(rows_.size());
  const bool isRoomy = window()->width() >= Metrics::wideFrom && wanted <= room &&
                       columns.height <= RowLayout::roomyHeight;
  for (ParameterRow* const row : rows_) {
    row->setColumns(columns);
    row->setRoomy(isRoomy);
  }
}

void TuningPage::renderRows(const TuningSnapshot& menu) {
  if (rows_.empty() || product_ != model().product()) {
    product_ = model().product();
    buildRows(TuningParameter::adjustable(product_));
  }
  for (ParameterRow* const row : rows_) {
    const TuningParameter parameter = row->parameter();
    row->show({parameter, menu.value(parameter, product_), unsaved(parameter), product_,
               outcomeOf(parameter)},
              whyWait(model()));
  }
}

// The staged value; during a save, none for a value that the base already has.
std::optional<std::int64_t> TuningPage::unsaved(TuningParameter parameter) const {
  const auto staged = model().staged().find(parameter);
  if (staged == model().staged().end()) return std::nullopt;
  const bool isSaved =
      model().progress() && isCurrentValue({parameter, staged->second}, model().tuning(), product_);
  return isSaved ? std::nullopt : std::optional(staged->second);
}

std::optional<Outcome> TuningPage::outcomeOf(TuningParameter parameter) const {
  const auto found = model().outcomes().find(parameter);
  return found == model().outcomes().end() ? std::nullopt : std::optional(found->second);
}

// When a bar goes with the focus, the control edited last gets it back.
void TuningPage::returnToRow() {
  if (lastEdited_ && lastEdited_->isVisible()) lastEdited_->setFocus(Qt::OtherFocusReason);
}

void TuningPage::noteChanges(const TuningSnapshot& before) {
  const auto& menu = model().tuning();
  if (!menu || menu->slot() != before.slot() || menu->isAdvancedMode() != before.isAdvancedMode()) {
    return;
  }
  for (ParameterRow* const row : rows_) {
    if (menu->rawValue(row->parameter()) != before.rawValue(row->parameter())) {
      row->noteChangeAtBase();
    }
  }
}

void TuningPage::buildRows(const std::vector<TuningParameter>& parameters) {
  for (ParameterRow* const row : rows_) delete row;
  rows_.clear();
  for (const TuningParameter parameter : parameters) {
    auto* const row = new ParameterRow(
        RowState{parameter, model().tuning()->value(parameter, product_), {}, product_});
    column_->insertWidget(static_cast<int>(rows_.size()), row);
    rows_.push_back(row);
    connectRow(row);
  }
  measureRows();
  std::vector<QWidget*> inReadingOrder(rows_.begin(), rows_.end());
  inReadingOrder.push_back(barsBelow_);
  chainTabOrder(inReadingOrder);
}

void TuningPage::connectRow(ParameterRow* row) {
  connect(row, &ParameterRow::staged, this,
          [this](TuningParameter changed, std::int64_t value) { model().stage(changed, value); });
  connect(row, &ParameterRow::reverted, this,
          [this](TuningParameter changed) { model().revert(changed); });
  connect(row, &ParameterRow::triedAgain, this,
          [this](TuningParameter again) { model().trySaving(again); });
  connect(row, &ParameterRow::helpWanted, this, [this](TuningParameter wanted) {
    (new SettingHelpPopup(model(), wanted, window()))->open();
  });
  connect(row, &ParameterRow::neighbourWanted, this,
          [this, row](bool next) { focusNeighbour(row, next); });
  connect(row, &ParameterRow::pointed, this, [this, row](bool isOver) { rowPointed(row, isOver); });
}

void TuningPage::noteTaken(TuningParameter parameter) {
  for (ParameterRow* const row : rows_) {
    if (row->parameter() == parameter) row->noteTaken();
  }
}

void TuningPage::resizeEvent(QResizeEvent* event) {
  renderHelp();
  View::resizeEvent(event);
}

void TuningPage::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) measureRows();
  View::changeEvent(event);
}

bool TuningPage::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_ && event->type() == QEvent::Resize) fitRows();
  return View::eventFilter(watched, event);
}

}  // namespace quorvane
