#include "ui/shell/main_window.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "app/environment.h"
#include "ui/base/base_page.h"
#include "ui/kit/button.h"
#include "ui/kit/file_uri.h"
#include "ui/kit/focus_ring.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/readout.h"
#include "ui/kit/tab_order.h"
#include "ui/kit/text.h"
#include "ui/log/log_page.h"
#include "ui/model/availability.h"
#include "ui/model/bar.h"
#include "ui/presets/load_preset.h"
#include "ui/presets/presets_page.h"
#include "ui/shell/closing.h"
#include "ui/shell/comparing.h"
#include "ui/shell/drop_frame.h"
#include "ui/shell/history_bars.h"
#include "ui/shell/sidebar.h"
#include "ui/shell/status_bar.h"
#include "ui/tools/tools_page.h"
#include "ui/tuning/auto_set_warning.h"
#include "ui/tuning/save_bar.h"
#include "ui/tuning/tuning_page.h"

namespace quorvane {
namespace {

constexpr int messageGap = 16;

Section firstSection() { return section(Environment::section()).value_or(Section::tuning); }

}  // namespace

MainWindow::MainWindow(AppModel& model, const QString& note)
    : model_(model),
      section_(firstSection()),
      closing_(new Closing(model, *this)),
      comparing_(new Comparing(model, *this)),
      sidebar_(new Sidebar(model)),
      pages_(new QStackedWidget),
      statusBar_(new StatusBar(model)),
      findOutWhy_(new Button(QStringLiteral("Find out why"))) {
  setObjectName(QStringLiteral("mainWindow"));
  PlainText::setWindowTitle(*this, note.isEmpty() ? QStringLiteral("Quorvane")
                                                  : QStringLiteral("Quorvane (%1)").arg(note));
  setAcceptDrops(true);
  setMinimumSize(Metrics::minimumWidth, Metrics::minimumHeight);
  resize(Metrics::defaultWidth, Metrics::defaultHeight);

  auto* const detail = new QWidget;
  auto* const column = new QVBoxLayout(detail);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(pages_, 1);
  column->addWidget(statusBar_);
  auto* const centre = new QWidget;
  auto* const row = new QHBoxLayout(centre);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(sidebar_);
  row->addWidget(detail, 1);
  setCentralWidget(centre);
  dropFrame_ = new DropFrame(detail);
  findOutWhy_->setParent(detail);
  findOutWhy_->setObjectName(QStringLiteral("findOutWhyButton"));
  connect(findOutWhy_, &Button::clicked, this, &MainWindow::findOutWhy);
  pages_->installEventFilter(this);
  buildMenus();
  new FocusRing(this);

  connect(statusBar_, &StatusBar::compareAsked, comparing_, &Comparing::comparePreset);
  connect(sidebar_, &Sidebar::chosen, this, &MainWindow::setSection);
  connect(&model_, &AppModel::changed, this, &MainWindow::modelChanged);
  setSection(section_);
  modelChanged();
}

void MainWindow::setSection(Section section) {
  section_ = section;
  sidebar_->setSection(section);
  shareUndoKey();
  View* const next = page(section);
  if (next != pages_->currentWidget()) showPage(next);
  placeFindOutWhy();
}

// Moves the focus first: Qt would give it to an arbitrary control of the new page.
void MainWindow::showPage(View* next) {
  const QWidget* const focused = focusWidget();
  const bool movesFocus = focused != nullptr && pages_->isAncestorOf(focused);
  if (movesFocus) pages_->setFocus(Qt::OtherFocusReason);
  pages_->setCurrentWidget(next);
  if (movesFocus) next->takeFocus();
}

// Without a base, "Find out why" is all that there is on the page "Tuning".
void MainWindow::focusPage() {
  View* const shown = page(section_);
  shown->takeFocus();
  if (focusWidget() == shown && findOutWhy_->isVisible()) {
    findOutWhy_->setFocus(Qt::OtherFocusReason);
  }
}

void MainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (!event->spontaneous() && focusWidget() == nullptr) focusPage();
}

// The page comes first, the sidebar with its links last.
bool MainWindow::focusNextPrevChild(bool next) {
  QWidget* const control =
      controlAmong({page(section_), findOutWhy_, statusBar_, sidebar_}, focusWidget(), next);
  if (control == nullptr) return QMainWindow::focusNextPrevChild(next);
  control->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

View* MainWindow::page(Section section) {
  View*& page = built_[static_cast<std::size_t>(section)];
  if (page == nullptr) {
    page = buildPage(section);
    pages_->addWidget(page);
  }
  return page;
}

View* MainWindow::buildPage(Section section) {
  switch (section) {
    case Section::tuning:
      return buildTuning();
    case Section::base:
      return new BasePage(model_);
    case Section::presets: {
      auto* const presets = new PresetsPage(model_);
      comparing_->follow(*presets);
      connect(presets, &PresetsPage::compactChanged,
              findChild<QAction*>(QStringLiteral("compactPresetsAction")), &QAction::setChecked);
      return presets;
    }
    case Section::tools:
      return new ToolsPage(model_);
    case Section::log:
      return new LogPage(model_);
  }
  Q_UNREACHABLE();
}

// Puts the bars in their places, the most important ones first.
View* MainWindow::buildTuning() {
  auto* const page = new TuningPage(model_);
  auto* const warning = new AutoSetWarning(model_);
  page->barsAbove().add(warning);
  saveBar_ = new SaveBar(model_);
  page->barsBelow().add(saveBar_);
  auto* const bars = new HistoryBars(model_, *page, *warning, *saveBar_);
  connect(bars, &HistoryBars::compareAsked, comparing_, &Comparing::compareAfter);
  return page;
}

// Runs an action on the menu if the section "Tuning" is shown; otherwise only shows it.
void MainWindow::onTuning(const std::function<void()>& action) {
  if (section_ == Section::tuning) {
    // Commit a value that is being typed.
    if (auto* const typed = qobject_cast<Readout*>(QApplication::focusWidget())) typed->commit();
    action();
  } else {
    setSection(Section::tuning);
  }
}

void MainWindow::undo() {
  if (model_.staged().empty()) {
    model_.undo();
  } else {
    model_.takeBackEdit();
  }
}

void MainWindow::redo() {
  if (model_.staged().empty()) model_.redo();
}

void MainWindow::renderUndo() {
  const bool hasEdits = !model_.staged().empty();
  setAvailable(undo_, hasEdits ? whyNotNow(model_) : whyNotReverse(model_, UndoDirection::undo));
  setAvailable(redo_, hasEdits ? QStringLiteral("Save or discard the unsaved changes first")
                               : whyNotReverse(model_, UndoDirection::redo));
}

// The section "Presets" has an action of its own for the key.
void MainWindow::shareUndoKey() {
  undo_->setShortcut(section_ == Section::presets ? QKeySequence()
                                                  : QKeySequence(Qt::CTRL | Qt::Key_Z));
}

void MainWindow::modelChanged() {
  const QString whyNot = whyNotNow(model_);
  const QString noEdits =
      model_.staged().empty() ? QStringLiteral("There are no unsaved changes") : whyNot;
  setAvailable(save_, noEdits);
  setAvailable(discard_, noEdits);
  renderUndo();
  setAvailable(readAgain_, whyNot);
  setAvailable(loadPreset_, whyNotLoad(model_));
  setAvailable(share_, model_.isConnected() && model_.tuning()
                           ? QString()
                           : QStringLiteral("Connect a base first: its menu is what gets shared"));
  setAvailable(export_, model_.userPresets().empty()
                            ? QStringLiteral("There is no preset of your own to export yet")
                            : QString());
  placeFindOutWhy();
  followRequest();
}

// Shows the button, which belongs to the window's frame, below the message of the section "Tuning".
// When it goes, the page takes its focus.
void MainWindow::placeFindOutWhy() {
  const bool shows = section_ == Section::tuning && !model_.isConnected();
  if (!shows && findOutWhy_->hasFocus()) page(section_)->takeFocus();
  findOutWhy_->setVisible(shows);
  if (!shows) return;
  const auto& tuning = static_cast<const TuningPage&>(*page(Section::tuning));
  const QRect message = tuning.messageRect().translated(pages_->pos());
  const QSize size = findOutWhy_->sizeHint();
  findOutWhy_->setGeometry(message.center().x() + 1 - size.width() / 2,
                           message.bottom() + 1 + messageGap, size.width(), size.height());
  findOutWhy_->raise();
}

void MainWindow::findOutWhy() {
  setSection(Section::base);
  model_.examine();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  // The page is laid out after its stack: place the button afterwards.
  if (watched == pages_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show)) {
    QMetaObject::invokeMethod(this, &MainWindow::placeFindOutWhy, Qt::QueuedConnection);
  }
  return QMainWindow::eventFilter(watched, event);
}

void MainWindow::followRequest() {
  if (!model_.requestedSection()) return;
  const auto wanted = quorvane::section(*model_.requestedSection());
  if (!wanted) return;
  setSection(*wanted);
  model_.setRequestedSection(std::nullopt);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  constexpr int leastBeside = Metrics::minimumWidth - Metrics::sidebarMinimum;
  const int least = std::max(Metrics::sidebarMinimum, sidebar_->minimumSizeHint().width());
  sidebar_->setFixedWidth(
      std::clamp(width() - leastBeside, least, std::max(least, Metrics::sidebarWidth)));
  QMainWindow::resizeEvent(event);
}

// A URI that is not a local file is passed on as a file name, so that the error names it.
void MainWindow::importFiles(const QStringList& uris) {
  std::vector<std::filesystem::path> files;
  files.reserve(static_cast<std::size_t>(uris.size()));
  for (const QString& uri : uris) files.push_back(FileURI::toPath(uri).value_or(text(uri)));
  model_.importAll(files);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (dropFrame_->offer(*event->mimeData())) event->acceptProposedAction();
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent* /*event*/) { dropFrame_->hide(); }

void MainWindow::dropEvent(QDropEvent* event) {
  dropFrame_->hide();
  QStringList uris;
  for (const QUrl& url : event->mimeData()->urls()) uris += url.toString(QUrl::FullyEncoded);
  importFiles(uris);
  event->acceptProposedAction();
}

void MainWindow::closeEvent(QCloseEvent* event) { event->setAccepted(closing_->mayClose()); }

void MainWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && saveBar_ != nullptr && saveBar_->isVisible()) {
    saveBar_->focusDiscard();
    return;
  }
  QMainWindow::keyPressEvent(event);
}

}  // namespace quorvane
