#include "ui/history/history_window.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPointer>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "support/text.h"
#include "ui/history/history_choice.h"
#include "ui/history/history_delegate.h"
#include "ui/history/history_list_model.h"
#include "ui/kit/button.h"
#include "ui/kit/focus_ring.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/kit/tick_box.h"
#include "ui/kit/wrapped_label.h"
#include "ui/model/availability.h"
#include "ui/model/section.h"

namespace quorvane {
namespace {

constexpr int historyWidth = 680;
constexpr int historyHeight = 604;
constexpr int leastHistoryHeight = 360;
constexpr int historyLines = 40;  // the least width, as a multiple of the font's height
constexpr int historyBarPadding = 12;
constexpr int rowsInABatch = 100;  // are laid out before other events are handled

// Why the menu before the record cannot be shown; empty when it can.
QString whyNotCompare(const HistoryRecord* record) {
  if (record == nullptr) return QStringLiteral("Choose a line first");
  return record->menu ? QString() : QStringLiteral("The values before this are not known");
}

}  // namespace

HistoryWindow::HistoryWindow(AppModel& model, QWidget* parent)
    : QDialog(parent),
      model_(model),
      records_(new HistoryListModel(this)),
      header_(new QWidget),
      foot_(new QWidget),
      subtitle_(wrappedLabel("historySubtitle", Metrics::Type::callout, QPalette::Dark)),
      onlyThisSet_(new TickBox(QStringLiteral("Only this set"))),
      notice_(wrappedLabel("historyNotice", Metrics::Type::callout, QPalette::WindowText)),
      pages_(new QStackedWidget),
      message_(wrappedLabel("historyMessage", Metrics::Type::body, QPalette::Dark)),
      list_(new QListView),
      choice_(wrappedLabel("historyChoice", Metrics::Type::body, QPalette::Dark)),
      close_(new Button(QStringLiteral("Close"))),
      compare_(new Button(QStringLiteral("Compare…"))),
      fillIn_(new Button(QStringLiteral("Fill in"), Button::Kind::prominent)) {
  setObjectName(QStringLiteral("historyWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  PlainText::setWindowTitle(*this, QStringLiteral("History"));
  setAccessibleName(QStringLiteral("History"));
  buildHeader();
  buildFoot();
  notice_->setContentsMargins(Metrics::pageInset, Metrics::gap, Metrics::pageInset, Metrics::gap);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(header_);
  column->addWidget(notice_);
  column->addWidget(buildList(), 1);
  column->addWidget(foot_);
  const int width = std::max(historyWidth, historyLines * fontMetrics().height());
  setMinimumSize(width * 3 / 4, leastHistoryHeight);
  resize(width, historyHeight);
  new FocusRing(this);
  connect(&model, &AppModel::changed, this, &HistoryWindow::render);
  close_->setFocus();
  render();
}

HistoryWindow::~HistoryWindow() = default;

HistoryWindow& HistoryWindow::showAbove(AppModel& model, QWidget& parent) {
  auto* window = parent.findChild<HistoryWindow*>(QString(), Qt::FindDirectChildrenOnly);
  if (window == nullptr) window = new HistoryWindow(model, &parent);
  window->show();
  window->raise();
  window->activateWindow();
  return *window;
}

void HistoryWindow::buildHeader() {
  QLabel* const title =
      wrappedLabel("historyTitle", Metrics::Type::dialogTitle, QPalette::WindowText);
  title->setText(QStringLiteral("History"));
  onlyThisSet_->setObjectName(QStringLiteral("onlyThisSetBox"));
  onlyThisSet_->setAccessibleName(QStringLiteral("Only this set"));
  connect(onlyThisSet_, &TickBox::toggled, this, [this](bool isOnly) {
    isOnlyThisSet_ = isOnly;
    render();
  });
  auto* const titles = new QVBoxLayout;
  titles->setSpacing(0);
  titles->addWidget(title);
  titles->addWidget(subtitle_);
  auto* const row = new QHBoxLayout(header_);
  row->setContentsMargins(Metrics::pageInset, historyBarPadding + 4, Metrics::pageInset,
                          historyBarPadding);
  row->addLayout(titles, 1);
  row->addWidget(onlyThisSet_);
}

QWidget* HistoryWindow::buildList() {
  list_->setObjectName(QStringLiteral("historyList"));
  list_->setAccessibleName(QStringLiteral("History"));
  list_->setModel(records_);
  list_->setItemDelegate(new HistoryDelegate(list_));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setResizeMode(QListView::Adjust);
  list_->setLayoutMode(QListView::Batched);
  list_->setBatchSize(rowsInABatch);
  list_->setTabKeyNavigation(false);
  list_->installEventFilter(this);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          &HistoryWindow::renderFoot);
  message_->setAlignment(Qt::AlignCenter);
  message_->setMargin(Metrics::pageInset);
  pages_->addWidget(message_);
  pages_->addWidget(list_);
  return pages_;
}

void HistoryWindow::buildFoot() {
  close_->setObjectName(QStringLiteral("closeHistoryButton"));
  connect(close_, &Button::clicked, this, &QDialog::reject);
  compare_->setObjectName(QStringLiteral("compareHistoryButton"));
  connect(compare_, &Button::clicked, this, &HistoryWindow::askToCompare);
  connect(list_, &QListView::doubleClicked, compare_, &Button::click);
  fillIn_->setObjectName(QStringLiteral("fillHistoryButton"));
  connect(fillIn_, &Button::clicked, this, &HistoryWindow::fillIn);
  for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
    connect(new QShortcut(QKeySequence(static_cast<int>(Qt::CTRL) | key), this),
            &QShortcut::activated, fillIn_, &Button::click);
  }
  auto* const row = new QHBoxLayout(foot_);
  row->setContentsMargins(Metrics::pageInset, historyBarPadding, Metrics::pageInset,
                          historyBarPadding);
  row->setSpacing(Metrics::gap);
  row->addWidget(choice_, 1);
  row->addWidget(close_);
  row->addWidget(compare_);
  row->addWidget(fillIn_);
}

// Turns to the history of the base that is connected now.
void HistoryWindow::follow() {
  const auto file = model_.historyFile();
  if (!file || file == file_) return;
  file_ = file;
  contents_.reset();
  failure_.clear();
  subtitle_->setText(QStringLiteral("What was written to %1")
                         .arg(text(oneLine(model_.connectedName().value_or("the base")))));
  watch_ = std::make_unique<FileWatch>(*file);
  connect(watch_.get(), &FileWatch::touched, this, &HistoryWindow::read);
  read();
}

void HistoryWindow::read() {
  model_.readHistory([window = QPointer(this), file = file_](const HistoryContents& contents,
                                                             const std::string& failure) {
    if (window && window->file_ == file) window->take(contents, failure);
  });
}

// After a failure the records that were read before stay.
void HistoryWindow::take(const HistoryContents& contents, const std::string& failure) {
  failure_ = failure;
  if (failure.empty() || !contents_) contents_ = contents;
  const bool hadList = list_->isVisible();
  renderList();
  render();
  if (!hadList) list_->setFocus();  // has no effect while there is still none
}

void HistoryWindow::render() {
  follow();
  const auto& menu = model_.tuning();
  setAvailable(*onlyThisSet_,
               menu || isOnlyThisSet_ ? QString() : QStringLiteral("Connect a base first"),
               QStringLiteral("Show what was written to the set that is active now"));
  std::optional<MenuPlace> ofSet;
  if (isOnlyThisSet_) ofSet = menu ? std::optional(MenuPlace(*menu)) : ofSet_;
  if (ofSet != ofSet_) {
    ofSet_ = ofSet;
    renderList();
  }
  renderTexts();
  renderFoot();
}

void HistoryWindow::renderList() {
  if (!contents_) return;
  const HistoryRecord* const before = chosen();
  const std::optional<UUID> id = before == nullptr ? std::nullopt : std::optional(before->id);
  records_->show(contents_->records, ofSet_);
  const QModelIndex row = records_->rowOf(id);
  if (row.isValid() && row != list_->currentIndex()) list_->setCurrentIndex(row);
}

void HistoryWindow::renderTexts() {
  const QString why = message();
  message_->setText(why);
  pages_->setCurrentIndex(why.isEmpty() ? 1 : 0);
  QString notice;
  if (contents_ && !failure_.empty() && why.isEmpty()) {
    notice = QStringLiteral("The history cannot be read now: %1").arg(text(oneLine(failure_)));
  } else if (contents_ && contents_->unreadableLines > 0) {
    notice = QStringLiteral("Left out: %1 that cannot be read")
                 .arg(text(counted(contents_->unreadableLines, "line")));
  }
  notice_->setText(notice);
  notice_->setVisible(!notice.isEmpty());
}

// What is said instead of a list; empty when there are rows.
QString HistoryWindow::message() const {
  if (!file_) {
    return QStringLiteral("Connect a base to see what was written to it");
  }
  if (!contents_) return QStringLiteral("Reading…");
  if (records_->rowCount() > 0) return {};
  if (!failure_.empty()) {
    return QStringLiteral("The history cannot be read: %1").arg(text(oneLine(failure_)));
  }
  if (isOnlyThisSet_ && !contents_->records.empty()) {
    return QStringLiteral(
        "Nothing was written to this set yet. Turn off \"Only this set\" to see "
        "the others");
  }
  return QStringLiteral(
      "Nothing was written to this base yet. Change a value on Tuning and save "
      "it: it is listed here, and you can go back to before it");
}

const HistoryRecord* HistoryWindow::chosen() const {
  return records_->record(list_->currentIndex());
}

void HistoryWindow::renderFoot() {
  const HistoryRecord* const record = chosen();
  choice_->setText(record == nullptr ? QString() : historyChoice(*record, model_.tuning()));
  setAvailable(*compare_, whyNotCompare(record),
               QStringLiteral("Compare these values with those on the base"));
  setAvailable(*fillIn_, whyNotFillIn(record),
               QStringLiteral("Fill these values in as unsaved changes"));
}

QString HistoryWindow::whyNotFillIn(const HistoryRecord* record) const {
  QString whyNot = whyNotLoad(model_);
  if (!whyNot.isEmpty()) return whyNot;
  QString unknown = whyNotCompare(record);
  if (!unknown.isEmpty()) return unknown;
  const StagedValues edits = editsBackTo(*record, model_.tuning(), model_.product());
  if (edits.empty()) return QStringLiteral("The base has these values already");
  return edits == model_.staged() ? QStringLiteral("These values are filled in already")
                                  : QString();
}

void HistoryWindow::askToCompare() {
  if (const HistoryRecord* const record = chosen()) emit compareAsked(*record);
}

void HistoryWindow::fillIn() {
  const HistoryRecord* const record = chosen();
  if (record == nullptr || !record->menu) return;
  model_.stagePreset(presetBefore(*record, model_.product()));
  model_.setRequestedSection(std::string(rawValue(Section::tuning)));
  close();
}

void HistoryWindow::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.surface);
  drawEdge(painter, header_->geometry(), Qt::BottomEdge, t.line);
  drawEdge(painter, foot_->geometry(), Qt::TopEdge, t.line);
}

// The end of a long list can be reached before it is laid out to there.
void HistoryWindow::layOutAll() {
  list_->setLayoutMode(QListView::SinglePass);
  list_->doItemsLayout();
  list_->setLayoutMode(QListView::Batched);
}

// Return would press a default button of the dialog.
bool HistoryWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (isReturn && !key.modifiers().testFlag(Qt::ControlModifier)) {
      compare_->click();
      return true;
    }
    if (key.key() == Qt::Key_End) layOutAll();
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace quorvane
