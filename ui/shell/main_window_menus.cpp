// The menus of MainWindow.

#include <QAction>
#include <QDesktopServices>
#include <QMenuBar>
#include <QUrl>
#include <utility>

#include "ui/history/history_window.h"
#include "ui/kit/text.h"
#include "ui/model/addresses.h"
#include "ui/model/availability.h"
#include "ui/presets/preset_finder.h"
#include "ui/presets/presets_page.h"
#include "ui/shell/about_dialog.h"
#include "ui/shell/comparing.h"
#include "ui/shell/main_window.h"
#include "ui/shell/shortcuts_sheet.h"
#include "ui/tuning/tuning_page.h"

namespace quorvane {
namespace {

// Adds the entry that leads to the name of a new preset.
template <typename Action>
void addSavePreset(AppModel& model, QMenu* menu, Action action) {
  QAction* const entry =
      menu->addAction(QStringLiteral("Save as &preset…"),
                      QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S), menu, std::move(action));
  entry->setObjectName(QStringLiteral("savePresetAction"));
  const auto render = [&model, entry] {
    setAvailable(entry, model.tuning()
                            ? QString()
                            : QStringLiteral("Connect a base first: its menu is what gets saved"));
  };
  QObject::connect(&model, &AppModel::changed, entry, render);
  render();
}

}  // namespace

void MainWindow::buildMenus() {
  buildFileMenu(newMenu(QStringLiteral("&File")));
  buildEditMenu(newMenu(QStringLiteral("&Edit")));
  buildViewMenu(newMenu(QStringLiteral("&View")));
  buildHelpMenu(newMenu(QStringLiteral("&Help")));
}

QMenu* MainWindow::newMenu(const QString& title) {
  QMenu* const menu = menuBar()->addMenu(title);
  menu->setToolTipsVisible(true);
  return menu;
}

void MainWindow::buildFileMenu(QMenu* menu) {
  QAction* const import =
      menu->addAction(QStringLiteral("&Import…"), QKeySequence(Qt::CTRL | Qt::Key_I), &model_,
                      &AppModel::importSettingsFile);
  import->setObjectName(QStringLiteral("importAction"));
  share_ = menu->addAction(QStringLiteral("&Share…"), QKeySequence(Qt::CTRL | Qt::Key_E), &model_,
                           &AppModel::shareCurrentSettings);
  share_->setObjectName(QStringLiteral("shareAction"));
  export_ = menu->addAction(QStringLiteral("E&xport mine…"), &model_, &AppModel::exportPresets);
  export_->setObjectName(QStringLiteral("exportAction"));
  menu->addSeparator();
  QAction* const quit = menu->addAction(QStringLiteral("&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q),
                                        this, &QWidget::close);
  quit->setObjectName(QStringLiteral("quitAction"));
}

void MainWindow::buildEditMenu(QMenu* menu) {
  const auto add = [this, menu](const char* name, const QString& title, int key,
                                void (MainWindow::*run)()) {
    QAction* const action = menu->addAction(title, QKeySequence(Qt::CTRL | key), this, [this, run] {
      onTuning([this, run] { (this->*run)(); });
    });
    action->setObjectName(QString::fromLatin1(name));
    action->setAutoRepeat(false);
    return action;
  };
  undo_ = add("undoAction", QStringLiteral("&Undo"), Qt::Key_Z, &MainWindow::undo);
  redo_ = add("redoAction", QStringLiteral("R&edo"), Qt::Key_Y, &MainWindow::redo);
  menu->addSeparator();
  save_ = menu->addAction(QStringLiteral("&Save to set"), QKeySequence(Qt::CTRL | Qt::Key_S), this,
                          [this] { onTuning([this] { model_.saveStaged(); }); });
  save_->setObjectName(QStringLiteral("saveAction"));
  discard_ =
      menu->addAction(QStringLiteral("&Discard"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z),
                      this, [this] { onTuning([this] { model_.discardStaged(); }); });
  discard_->setObjectName(QStringLiteral("discardAction"));
  readAgain_ = menu->addAction(QStringLiteral("&Read again"), &model_, &AppModel::refresh);
  readAgain_->setObjectName(QStringLiteral("readAgainAction"));
  readAgain_->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_R), QKeySequence(Qt::Key_F5)});
  menu->addSeparator();
  loadPreset_ = menu->addAction(QStringLiteral("&Load preset…"), QKeySequence(Qt::CTRL | Qt::Key_L),
                                this, [this] { (new PresetFinder(model_, this))->open(); });
  loadPreset_->setObjectName(QStringLiteral("loadPresetAction"));
  comparing_->addEntry(*menu);
  addSavePreset(model_, menu, [this] {
    setSection(Section::presets);
    static_cast<PresetsPage*>(page(Section::presets))->focusNewName();
  });
  QAction* const history = menu->addAction(
      QStringLiteral("&History…"), QKeySequence(Qt::CTRL | Qt::Key_H), this, [this] {
        connect(&HistoryWindow::showAbove(model_, *this), &HistoryWindow::compareAsked, comparing_,
                &Comparing::compareBefore, Qt::UniqueConnection);
      });
  history->setObjectName(QStringLiteral("historyAction"));
}

void MainWindow::buildViewMenu(QMenu* menu) {
  for (std::size_t i = 0; i < allSections.size(); ++i) {
    const Section section = allSections[i];
    QAction* const action = menu->addAction(
        text(rawValue(section)),
        QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + static_cast<int>(i))), this,
        [this, section] {
          setSection(section);
          focusPage();
        });
    action->setObjectName(QStringLiteral("view%1Action").arg(text(rawValue(section))));
  }
  menu->addSeparator();
  QAction* const help = menu->addAction(QStringLiteral("&What it does"));
  help->setObjectName(QStringLiteral("whatItDoesAction"));
  help->setCheckable(true);
  help->setChecked(true);
  connect(help, &QAction::toggled, this, [this](bool shows) {
    static_cast<TuningPage*>(page(Section::tuning))->setShowsHelp(shows);
  });
  QAction* const compact = menu->addAction(QStringLiteral("&Compact presets"));
  compact->setObjectName(QStringLiteral("compactPresetsAction"));
  compact->setCheckable(true);
  connect(menu, &QMenu::aboutToShow, compact,
          [compact] { compact->setChecked(PresetsPage::isCompactRemembered()); });
  connect(compact, &QAction::triggered, this, [this](bool isCompact) {
    static_cast<PresetsPage*>(page(Section::presets))->setCompact(isCompact);
  });
  QAction* const sheet =
      menu->addAction(QStringLiteral("&Keyboard shortcuts"), QKeySequence(Qt::Key_F1), this,
                      [this] { (new ShortcutsSheet(this))->open(); });
  sheet->setObjectName(QStringLiteral("shortcutsAction"));
}

void MainWindow::buildHelpMenu(QMenu* menu) {
  const auto link = [&](const QString& title, const QUrl& url, const char* name) {
    QAction* const action = menu->addAction(title, this, [url] { QDesktopServices::openUrl(url); });
    action->setObjectName(QString::fromLatin1(name));
  };
  link(QStringLiteral("Quorvane website"), Addresses::website(), "websiteAction");
  link(QStringLiteral("Support the firmware work"), Addresses::firmwareSupport(), "supportAction");
  link(QStringLiteral("Email support"), Addresses::supportMail(), "mailAction");
  menu->addSeparator();
  link(QStringLiteral("User guide"), Addresses::userGuide(), "userGuideAction");
  QAction* const about = menu->addAction(QStringLiteral("&About Quorvane"), this,
                                         [this] { (new AboutDialog(this))->open(); });
  about->setObjectName(QStringLiteral("aboutAction"));
}

}  // namespace quorvane
