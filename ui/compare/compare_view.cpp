#include "ui/compare/compare_view.h"

#include <QAction>
#include <QGuiApplication>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "support/text.h"
#include "ui/compare/compare_columns.h"
#include "ui/compare/compare_delegate.h"
#include "ui/compare/compare_header.h"
#include "ui/compare/compare_model.h"
#include "ui/compare/side_picker.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/tick_box.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int fewestRows = 5;
constexpr int usualRows = 17;
constexpr int footPadding = 12;
constexpr int linesNotUnderstood = 4;

OneSidedWords wordsFor(const CompareSide& left, const CompareSide& right) {
  OneSidedWords words;
  if (left.kind == CompareSide::Kind::base) words.onlyLeft = "only on the base";
  if (right.kind == CompareSide::Kind::base) words.onlyRight = "only on the base";
  return words;
}

QLabel* countLabel(const char* objectName, Metrics::Type type) {
  QLabel* const label = PlainText::label();
  label->setObjectName(QString::fromLatin1(objectName));
  label->setFont(Metrics::font(type));
  return label;
}

}  // namespace

CompareView::CompareView(AppModel& model, const LastMenu& lastMenu, QWidget* parent)
    : View(model, parent),
      lastMenu_(lastMenu),
      leftPicker_(new SidePicker(QStringLiteral("Left side"), QStringLiteral("leftSidePicker"))),
      rightPicker_(new SidePicker(QStringLiteral("Right side"), QStringLiteral("rightSidePicker"))),
      differing_(countLabel("differingCount", Metrics::Type::value)),
      others_(countLabel("otherCounts", Metrics::Type::body)),
      onlyDifferent_(new TickBox(QStringLiteral("Only what differs"))),
      header_(new CompareHeader),
      rows_(new CompareModel(this)),
      list_(new QListView),
      notUnderstood_(new QPlainTextEdit),
      copy_(new Button(QStringLiteral("Copy as text"))),
      fillIn_(new Button({}, Button::Kind::prominent)) {
  setObjectName(QStringLiteral("compareView"));
  setAccessibleName(QStringLiteral("Compare"));
  QLabel* const title = countLabel("compareTitle", Metrics::Type::dialogTitle);
  title->setText(QStringLiteral("Compare"));
  buildList();
  auto* const top = new QVBoxLayout;
  top->setContentsMargins(Metrics::pageInset, Metrics::pageInset, Metrics::pageInset, footPadding);
  top->setSpacing(footPadding);
  top->addWidget(title);
  top->addLayout(buildSides());
  top->addLayout(buildCounts());
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(top);
  column->addWidget(header_);
  column->addWidget(list_, 1);
  column->addWidget(notUnderstood_);
  column->addLayout(buildButtons());
  addKeys();
}

QHBoxLayout* CompareView::buildSides() {
  auto* const swap = new IconButton(QStringLiteral("arrow.left.arrow.right"));
  swap->setObjectName(QStringLiteral("swapSidesButton"));
  swap->setAccessibleName(QStringLiteral("Swap the sides"));
  PlainText::setToolTip(*swap, QStringLiteral("Swap the sides"));
  connect(swap, &IconButton::clicked, this, &CompareView::swapSides);
  connect(leftPicker_, &SidePicker::chosen, this,
          [this](const CompareSide& side) { choose(left_, side); });
  connect(rightPicker_, &SidePicker::chosen, this,
          [this](const CompareSide& side) { choose(right_, side); });
  connect(leftPicker_, &SidePicker::textAsked, this, [this] { choosePasted(left_); });
  connect(rightPicker_, &SidePicker::textAsked, this, [this] { choosePasted(right_); });
  connect(leftPicker_, &SidePicker::fileAsked, this, [this] { chooseFile(left_); });
  connect(rightPicker_, &SidePicker::fileAsked, this, [this] { chooseFile(right_); });
  auto* const row = new QHBoxLayout;
  row->setSpacing(Metrics::gap);
  row->addWidget(leftPicker_, 1);
  row->addWidget(swap);
  row->addWidget(rightPicker_, 1);
  return row;
}

QHBoxLayout* CompareView::buildCounts() {
  others_->setForegroundRole(QPalette::Dark);
  others_->setWordWrap(true);
  onlyDifferent_->setObjectName(QStringLiteral("onlyDifferentBox"));
  connect(onlyDifferent_, &TickBox::toggled, rows_, &CompareModel::setOnlyDifferent);
  auto* const row = new QHBoxLayout;
  row->setSpacing(others_->fontMetrics().horizontalAdvance(u' '));
  row->addWidget(differing_);
  row->addWidget(others_, 1);
  row->addWidget(onlyDifferent_);
  return row;
}

void CompareView::buildList() {
  list_->setObjectName(QStringLiteral("compareList"));
  list_->setAccessibleName(QStringLiteral("Settings on both sides"));
  list_->setModel(rows_);
  list_->setItemDelegate(new CompareDelegate(list_));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setSelectionMode(QAbstractItemView::NoSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setResizeMode(QListView::Adjust);
  list_->setUniformItemSizes(true);
  list_->setTabKeyNavigation(false);
  list_->setMinimumHeight(fewestRows * CompareColumns::rowHeight());
  list_->installEventFilter(this);
  list_->viewport()->installEventFilter(this);
  notUnderstood_->setObjectName(QStringLiteral("notUnderstood"));
  notUnderstood_->setAccessibleName(QStringLiteral("Not understood"));
  notUnderstood_->setReadOnly(true);
  notUnderstood_->setTabChangesFocus(true);
  notUnderstood_->setFrameShape(QFrame::NoFrame);
  notUnderstood_->document()->setDocumentMargin(Metrics::pageInset / 2.0);
  notUnderstood_->hide();
  connect(header_, &CompareHeader::allTicked, rows_, &CompareModel::tickAll);
  connect(rows_, &CompareModel::ticksChanged, this, &CompareView::renderButtons);
}

QHBoxLayout* CompareView::buildButtons() {
  auto* const close = new Button(QStringLiteral("Close"));
  copy_->setObjectName(QStringLiteral("copyComparedButton"));
  copy_->setSymbol(QStringLiteral("doc.on.doc"));
  close->setObjectName(QStringLiteral("closeCompareButton"));
  fillIn_->setObjectName(QStringLiteral("fillInButton"));
  connect(copy_, &Button::clicked, this, &CompareView::copy);
  connect(close, &Button::clicked, this, &CompareView::done);
  connect(fillIn_, &Button::clicked, this, &CompareView::fillIn);
  // Return must not press one of them.
  for (Button* const button : {copy_, close, fillIn_}) button->setAutoDefault(false);
  auto* const row = new QHBoxLayout;
  row->setContentsMargins(Metrics::pageInset, footPadding, Metrics::pageInset, footPadding);
  row->setSpacing(Metrics::gap);
  row->addWidget(copy_);
  row->addStretch(1);
  row->addWidget(close);
  row->addWidget(fillIn_);
  return row;
}

void CompareView::addKeys() {
  const auto add = [this](const char* name, const QList<QKeySequence>& keys, auto run) {
    auto* const action = new QAction(this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, run);
    addAction(action);
  };
  add("tickAllAction", {QKeySequence::SelectAll}, [this] { rows_->tickAll(true); });
  add("fillInAction",
      {QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)},
      [this] { fillIn_->click(); });
  add("pasteSideAction", {QKeySequence::Paste}, [this] { choosePasted(right_); });
}

void CompareView::focusRows() { list_->setFocus(Qt::OtherFocusReason); }

void CompareView::compare(const CompareSide& left, const CompareSide& right) {
  choose(left_, left);
  choose(right_, right);
}

QSize CompareView::wantedSize() const {
  const int rows = std::clamp(rows_->rowCount(), fewestRows, usualRows);
  return {CompareColumns::fullWidth(),
          sizeHint().height() - list_->sizeHint().height() + rows * CompareColumns::rowHeight()};
}

bool CompareView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == list_->viewport() && event->type() == QEvent::Resize) {
    header_->setRowWidth(list_->viewport()->width());
  }
  // The ring around a row shows after a key only.
  const bool isKey = watched == list_ && event->type() == QEvent::KeyPress;
  const bool isClick = watched == list_->viewport() && event->type() == QEvent::MouseButtonPress;
  if (isKey || isClick) {
    list_->setProperty(CompareDelegate::showsFocus, isKey);
    list_->viewport()->update();
  }
  return View::eventFilter(watched, event);
}

void CompareView::render() {
  followHistory();
  refresh(left_);
  refresh(right_);
  const auto choices = sides();
  leftPicker_->show(choices, left_);
  rightPicker_->show(choices, right_);
  renderRows();
  renderNotUnderstood();
}

void CompareView::renderRows() {
  const auto& product = lastMenu_.product();
  const SettingsComparison comparison(left_.values, right_.values, product);
  const OneSidedWords words = wordsFor(left_, right_);
  std::vector<CompareLine> lines;
  lines.reserve(comparison.rows().size());
  for (const ComparedRow& row : comparison.rows()) {
    lines.push_back(compareLine(row, comparison, product, words));
  }
  const QModelIndex current = list_->currentIndex();
  const QString code = current.isValid() ? current.data().toString() : QString();
  rows_->show(std::move(lines));
  if (!list_->currentIndex().isValid() && rows_->rowCount() > 0) {
    list_->setCurrentIndex(rows_->index(std::max(0, rows_->rowOf(code)), 0));
  }
  renderCounts(comparedCountTexts(comparison, words));
  renderButtons();
}

void CompareView::renderCounts(const std::vector<std::string>& counts) {
  QString others;
  for (auto count = counts.begin() + 1; count != counts.end(); ++count) {
    if (!others.isEmpty()) others += QStringLiteral(", ");
    others += text(*count);
  }
  differing_->setText(text(counts.front()) + u',');
  others_->setText(others);
}

// Lists every part of a pasted text that is no setting.
void CompareView::renderNotUnderstood() {
  QStringList lines;
  for (const CompareSide* const side : {&left_, &right_}) {
    for (const std::string& piece : side->notUnderstood) lines += text(oneLine(piece));
  }
  notUnderstood_->setVisible(!lines.isEmpty());
  if (lines.isEmpty()) return;
  lines.prepend(QStringLiteral("Not understood:"));
  const QString all = lines.join(u'\n');
  if (all != notUnderstood_->toPlainText()) notUnderstood_->setPlainText(all);
  const auto shown = std::min<qsizetype>(lines.size(), linesNotUnderstood);
  notUnderstood_->setFixedHeight(static_cast<int>(shown) * notUnderstood_->fontMetrics().height() +
                                 Metrics::pageInset);
}

QString CompareView::whyNotFillIn() const {
  QString whyNot = whyNotLoad(model());
  if (!whyNot.isEmpty()) return whyNot;
  if (right_.kind == CompareSide::Kind::base) {
    return QStringLiteral("The base has these values. Swap the sides to fill in the others");
  }
  return rows_->ticked().isEmpty() ? QStringLiteral("Tick a row first") : QString();
}

void CompareView::renderButtons() {
  const auto ticked = rows_->ticked().size();
  header_->show(rows_->allTicked(), rows_->isTickable());
  fillIn_->setText(ticked == 0 ? QStringLiteral("Fill in the ticked")
                               : QStringLiteral("Fill in the %1 ticked").arg(ticked));
  setAvailable(*fillIn_, whyNotFillIn(),
               QStringLiteral("Fills the right values in as unsaved changes (Ctrl+Return)"));
  setAvailable(*copy_,
               right_.values.empty() ? QStringLiteral("The right side has no values") : QString(),
               QStringLiteral("Copies the right side's values"));
}

}  // namespace quorvane
