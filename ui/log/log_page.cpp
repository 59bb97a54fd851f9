#include "ui/log/log_page.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QListView>
#include <QResizeEvent>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/button.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/toggle.h"
#include "ui/log/log_delegate.h"
#include "ui/log/log_model.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int topInset = 8;

}  // namespace

LogPage::LogPage(AppModel& model, QWidget* parent)
    : View(model, parent),
      lines_(new LogModel(this)),
      shown_(new LogFilter(lines_)),
      copyAll_(new Button(QStringLiteral("Copy all"))),
      list_(new QListView) {
  setObjectName(QStringLiteral("logPage"));
  setAccessibleName(QStringLiteral("Log"));
  list_->setObjectName(QStringLiteral("logList"));
  list_->setAccessibleName(QStringLiteral("Log"));
  list_->setModel(shown_);
  list_->setItemDelegate(new LogDelegate(list_));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setResizeMode(QListView::Adjust);
  list_->setTabKeyNavigation(false);
  list_->viewport()->installEventFilter(this);
  auto* const copy = new QAction(QStringLiteral("Copy"), list_);
  copy->setObjectName(QStringLiteral("copyLog"));
  copy->setShortcut(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, &LogPage::copyChosen);
  list_->addAction(copy);
  list_->setContextMenuPolicy(Qt::ActionsContextMenu);

  auto* const ground = new QWidget;
  ground->setBackgroundRole(QPalette::Base);
  ground->setAutoFillBackground(true);
  auto* const inner = new QVBoxLayout(ground);
  inner->setContentsMargins(0, topInset, 0, topInset);
  inner->addWidget(list_);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* const errorsOnly = new Toggle(QStringLiteral("Errors only"));
  errorsOnly->setObjectName(QStringLiteral("errorsOnlyToggle"));
  errorsOnly->setAccessibleName(QStringLiteral("Errors only"));
  connect(errorsOnly, &Toggle::chosen, this, &LogPage::showErrorsOnly);
  copyAll_->setObjectName(QStringLiteral("copyAllLogButton"));
  connect(copyAll_, &Button::clicked, this, &LogPage::copyAll);
  auto* const header = new PageHeader(QStringLiteral("Log"));
  header->add(errorsOnly);
  header->add(copyAll_);
  column->addWidget(header);
  column->addWidget(ground, 1);
}

bool LogPage::isAtEnd() const {
  const QScrollBar* const bar = list_->verticalScrollBar();
  return bar->value() >= bar->maximum();
}

void LogPage::render() {
  const bool follows = isAtEnd();
  lines_->show(model().log());
  if (follows) list_->scrollToBottom();
  renderButtons();
}

void LogPage::renderButtons() {
  const bool isEmpty = shown_->rowCount() == 0;
  setAvailable(*copyAll_, isEmpty ? QStringLiteral("There is no line to copy") : QString(),
               QStringLiteral("Copy all lines that are shown"));
}

void LogPage::showErrorsOnly(bool errorsOnly) {
  shown_->setErrorsOnly(errorsOnly);
  list_->scrollToBottom();
  renderButtons();
}

// A new width changes the line wrapping: scroll to the end again if it was visible.
bool LogPage::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::Resize && isAtEnd()) {
    QMetaObject::invokeMethod(list_, &QListView::scrollToBottom, Qt::QueuedConnection);
  }
  return false;
}

void LogPage::copyChosen() const {
  QModelIndexList chosen = list_->selectionModel()->selectedIndexes();
  std::sort(chosen.begin(), chosen.end());
  copy(chosen);
}

void LogPage::copyAll() const {
  QModelIndexList all;
  for (int row = 0; row < shown_->rowCount(); ++row) all += shown_->index(row, 0);
  copy(all);
}

void LogPage::copy(const QModelIndexList& rows) const {
  QStringList lines;
  for (const QModelIndex& row : rows) lines += row.data(LogModel::copyRole).toString();
  if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

}  // namespace quorvane
