#pragma once

#include <QMainWindow>
#include <array>

#include "app/app_model.h"
#include "ui/section.h"

class QStackedWidget;

namespace quorvane {

class Sidebar;
class StatusBar;

// The one window: sidebar, the chosen section, status bar and menus. Sections are built on their
// first visit.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  // `note` follows the program's name in the title.
  explicit MainWindow(AppModel& model, const QString& note = {});

  Section section() const { return section_; }
  void setSection(Section section);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void buildMenus();
  QWidget* page(Section section);
  QWidget* buildPage(Section section);
  void modelChanged();
  void followRequest();
  void onTuning(void (AppModel::*action)());

  AppModel& model_;
  Section section_;
  Sidebar* sidebar_;
  QStackedWidget* pages_;
  std::array<QWidget*, allSections.size()> built_{};

  QAction* save_ = nullptr;
  QAction* discard_ = nullptr;
  QAction* readAgain_ = nullptr;
  QAction* share_ = nullptr;
};

}  // namespace quorvane
