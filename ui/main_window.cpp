#include "ui/main_window.h"

#include <QAction>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QLabel>
#include <QMenuBar>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "app/environment.h"
#include "ui/addresses.h"
#include "ui/base_page.h"
#include "ui/focus_ring.h"
#include "ui/metrics.h"
#include "ui/painting.h"
#include "ui/sidebar.h"
#include "ui/status_bar.h"
#include "ui/tuning_page.h"

namespace quorvane {
namespace {

Section firstSection() { return section(Environment::section()).value_or(Section::tuning); }

}  // namespace

MainWindow::MainWindow(AppModel& model, const QString& note)
    : model_(model),
      section_(firstSection()),
      sidebar_(new Sidebar(model)),
      pages_(new QStackedWidget) {
  setObjectName(QStringLiteral("mainWindow"));
  setWindowTitle(note.isEmpty() ? QStringLiteral("Quorvane")
                                : QStringLiteral("Quorvane (%1)").arg(note));
  setMinimumSize(Metrics::minimumWidth, Metrics::minimumHeight);
  resize(Metrics::defaultWidth, Metrics::defaultHeight);

  auto* const detail = new QWidget;
  auto* const column = new QVBoxLayout(detail);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(pages_, 1);
  column->addWidget(new StatusBar(model));
  auto* const centre = new QWidget;
  auto* const row = new QHBoxLayout(centre);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(sidebar_);
  row->addWidget(detail, 1);
  setCentralWidget(centre);
  buildMenus();
  new FocusRing(this);

  connect(sidebar_, &Sidebar::chosen, this, &MainWindow::setSection);
  connect(&model_, &AppModel::changed, this, &MainWindow::modelChanged);
  setSection(section_);
  modelChanged();
}

void MainWindow::setSection(Section section) {
  section_ = section;
  sidebar_->setSection(section);
  pages_->setCurrentWidget(page(section));
}

QWidget* MainWindow::page(Section section) {
  QWidget*& page = built_[static_cast<std::size_t>(section)];
  if (page == nullptr) {
    page = buildPage(section);
    pages_->addWidget(page);
  }
  return page;
}

QWidget* MainWindow::buildPage(Section section) {
  switch (section) {
    case Section::tuning:
      return new TuningPage(model_);
    case Section::base:
      return new BasePage(model_);
    case Section::presets:
    case Section::tools:
    case Section::log:
      break;
  }
  return new QLabel(text(rawValue(section)));
}

void MainWindow::buildMenus() {
  QMenu* const file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addAction(QStringLiteral("&Import…"), QKeySequence(Qt::CTRL | Qt::Key_I), &model_,
                  &AppModel::importSettingsFile);
  share_ = file->addAction(QStringLiteral("&Share…"), QKeySequence(Qt::CTRL | Qt::Key_E), &model_,
                           &AppModel::shareCurrentSettings);
  file->addAction(QStringLiteral("E&xport mine…"), &model_, &AppModel::exportPresets);
  file->addSeparator();
  file->addAction(QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q), this,
                  &QWidget::close);

  QMenu* const edit = menuBar()->addMenu(QStringLiteral("&Edit"));
  save_ = edit->addAction(QStringLiteral("&Save to set"), QKeySequence(Qt::CTRL | Qt::Key_S), this,
                          [this] { onTuning(&AppModel::saveStaged); });
  discard_ =
      edit->addAction(QStringLiteral("&Discard"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z),
                      this, [this] { onTuning(&AppModel::discardStaged); });
  readAgain_ = edit->addAction(QStringLiteral("&Read again"), &model_, &AppModel::refresh);
  readAgain_->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_R), QKeySequence(Qt::Key_F5)});

  QMenu* const view = menuBar()->addMenu(QStringLiteral("&View"));
  for (std::size_t i = 0; i < allSections.size(); ++i) {
    const Section section = allSections[i];
    view->addAction(text(rawValue(section)),
                    QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(i))),
                    this, [this, section] { setSection(section); });
  }

  QMenu* const help = menuBar()->addMenu(QStringLiteral("&Help"));
  const auto link = [&](const QString& title, const QUrl& url) {
    help->addAction(title, this, [url] { QDesktopServices::openUrl(url); });
  };
  link(QStringLiteral("Quorvane website"), Addresses::website());
  link(QStringLiteral("Support the firmware work"), Addresses::firmwareSupport());
  link(QStringLiteral("Email support"), Addresses::supportMail());
}

// What concerns the staged edits acts where they are seen, and brings them to the front first.
void MainWindow::onTuning(void (AppModel::*action)()) {
  if (section_ == Section::tuning) {
    (model_.*action)();
  } else {
    setSection(Section::tuning);
  }
}

void MainWindow::modelChanged() {
  const bool canEdit = !model_.staged().empty() && !model_.busy();
  save_->setEnabled(canEdit);
  discard_->setEnabled(canEdit);
  readAgain_->setEnabled(model_.isConnected() && !model_.busy());
  share_->setEnabled(model_.isConnected() && model_.tuning().has_value());
  followRequest();
}

void MainWindow::followRequest() {
  if (!model_.requestedSection()) return;
  const auto wanted = quorvane::section(*model_.requestedSection());
  if (!wanted) return;
  setSection(*wanted);
  model_.setRequestedSection(std::nullopt);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  auto* const tuning = qobject_cast<TuningPage*>(pages_->currentWidget());
  if (event->key() == Qt::Key_Escape && tuning != nullptr && tuning->focusDiscard()) return;
  QMainWindow::keyPressEvent(event);
}

}  // namespace quorvane
