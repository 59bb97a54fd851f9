#pragma once

#include <QMainWindow>
#include <QStringList>
#include <array>
#include <functional>

#include "app/app_model.h"
#include "ui/model/section.h"

class QStackedWidget;

namespace quorvane {

class Button;
class Closing;
class Comparing;
class DropFrame;
class SaveBar;
class Sidebar;
class StatusBar;
class View;

// The main window: sidebar, current section, status bar and menus. A section is built when it is
// first shown.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  // `note` follows the program's name in the title.
  explicit MainWindow(AppModel& model, const QString& note = {});

  Section section() const { return section_; }
  void setSection(Section section);

  // Imports settings files, one after another in the order given. Several are also reported in one
  // line together.
  void importFiles(const QStringList& uris);

  Closing& closing() { return *closing_; }
  Comparing& comparing() { return *comparing_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildMenus();
  QMenu* newMenu(const QString& title);
  void buildFileMenu(QMenu* menu);
  void buildEditMenu(QMenu* menu);
  void buildViewMenu(QMenu* menu);
  void buildHelpMenu(QMenu* menu);
  View* page(Section section);
  void showPage(View* next);
  void focusPage();
  View* buildPage(Section section);
  View* buildTuning();
  void modelChanged();
  void followRequest();
  void placeFindOutWhy();
  void findOutWhy();
  void onTuning(const std::function<void()>& action);
  void undo();
  void redo();
  void renderUndo();
  void shareUndoKey();

  AppModel& model_;
  Section section_;
  Closing* closing_;
  Comparing* comparing_;
  Sidebar* sidebar_;
  QStackedWidget* pages_;
  StatusBar* statusBar_;
  DropFrame* dropFrame_ = nullptr;
  Button* findOutWhy_;  // over the section "Tuning", below its message, while there is no base
  std::array<View*, allSections.size()> built_{};
  SaveBar* saveBar_ = nullptr;  // once the section "Tuning" is built

  QAction* save_ = nullptr;
  QAction* discard_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* readAgain_ = nullptr;
  QAction* loadPreset_ = nullptr;
  QAction* share_ = nullptr;
  QAction* export_ = nullptr;
};

}  // namespace quorvane
