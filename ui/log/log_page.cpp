#include "ui/log/log_page.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QListView>
#include <QResizeEvent>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/form.h"
#include "ui/log/log_delegate.h"
#include "ui/log/log_model.h"

namespace quorvane {
namespace {

constexpr int topInset = 8;

}  // namespace

LogPage::LogPage(AppModel& model, QWidget* parent)
    : View(model, parent), lines_(new LogModel(this)), list_(new QListView) {
  setObjectName(QStringLiteral("logPage"));
  setAccessibleName(QStringLiteral("Log"));
  list_->setObjectName(QStringLiteral("logList"));
  list_->setAccessibleName(QStringLiteral("Log"));
  list_->setModel(lines_);
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
  connect(copy, &QAction::triggered, this, &LogPage::copy);
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
  column->addWidget(new PageHeader(QStringLiteral("Log")));
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
}

// A new width changes the line wrapping: scroll to the end again if it was visible.
bool LogPage::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::Resize && isAtEnd()) {
    QMetaObject::invokeMethod(list_, &QListView::scrollToBottom, Qt::QueuedConnection);
  }
  return false;
}

void LogPage::copy() const {
  QModelIndexList chosen = list_->selectionModel()->selectedIndexes();
  std::sort(chosen.begin(), chosen.end());
  QStringList lines;
  for (const QModelIndex& index : chosen) lines += lines_->copyText(index);
  if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

}  // namespace quorvane
