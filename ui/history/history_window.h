#pragma once

#include <QDialog>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "app/app_model.h"
#include "app/file_watch.h"
#include "session/menu_place.h"

class QLabel;
class QListView;
class QStackedWidget;

namespace quorvane {

class Button;
class HistoryListModel;
class TickBox;

// What was written to the connected base, by either program, and what was turned on its wheel: the
// newest first. Filling a record in stages the menu before it, and writes nothing. Not modal. Keeps
// the list when the base leaves; follows the history's file, which is read on the work queue.
class HistoryWindow final : public QDialog {
  Q_OBJECT

 public:
  // Shows the window that is open above `parent`, else a new one, and returns it.
  static HistoryWindow& showAbove(AppModel& model, QWidget& parent);

  ~HistoryWindow() override;

 signals:
  // The menu before the record is to be compared with the base's.
  void compareAsked(const quorvane::HistoryRecord& record);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  HistoryWindow(AppModel& model, QWidget* parent);

  void buildHeader();
  QWidget* buildList();
  void buildFoot();
  void follow();
  void read();
  void take(const HistoryContents& contents, const std::string& failure);
  void render();
  void renderList();
  void renderTexts();
  void renderFoot();
  QString message() const;
  const HistoryRecord* chosen() const;
  QString whyNotFillIn(const HistoryRecord* record) const;
  void askToCompare();
  void layOutAll();
  void fillIn();

  AppModel& model_;
  std::optional<std::filesystem::path> file_;  // the history that is shown
  std::unique_ptr<FileWatch> watch_;           // of it
  std::optional<HistoryContents> contents_;    // none before it was read
  std::string failure_;                        // of the last reading; empty on success
  std::optional<MenuPlace> ofSet_;             // only records of this set are shown
  bool isOnlyThisSet_ = false;

  HistoryListModel* records_;
  QWidget* header_;
  QWidget* foot_;
  QLabel* subtitle_;
  TickBox* onlyThisSet_;
  QLabel* notice_;  // about what could not be read
  QStackedWidget* pages_;
  QLabel* message_;  // instead of an empty list
  QListView* list_;
  QLabel* choice_;  // what filling in means
  Button* close_;
  Button* compare_;
  Button* fillIn_;
};

}  // namespace quorvane
