#pragma once

#include <utility>
#include <vector>

#include "ui/compare/compare_side.h"
#include "ui/compare/last_menu.h"
#include "ui/model/view.h"

class QHBoxLayout;
class QLabel;
class QListView;
class QPlainTextEdit;

namespace quorvane {

class Button;
class CompareHeader;
class CompareModel;
class IconButton;
class SidePicker;
class TickBox;

// The content of the window that compares two sides: what differs, and which values of the right
// side to fill in as unsaved changes. Follows the base and the presets; ticks stay. Writes nothing.
class CompareView final : public View {
  Q_OBJECT

 public:
  CompareView(AppModel& model, const LastMenu& lastMenu, QWidget* parent = nullptr);

  // Compares these, with every row ticked.
  void compare(const CompareSide& left, const CompareSide& right);

  // Gives the rows the keyboard focus.
  void focusRows();

  // The size that shows all rows, or the most that are usual.
  QSize wantedSize() const;

 signals:
  // The values are filled in, or the user has had enough.
  void done();

 protected:
  void render() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QHBoxLayout* buildSides();
  QHBoxLayout* buildCounts();
  void buildList();
  QHBoxLayout* buildButtons();
  void addKeys();
  void followHistory();
  void refresh(CompareSide& side) const;
  std::vector<CompareSide> sides() const;
  void choose(CompareSide& side, const CompareSide& chosen);
  void choosePasted(CompareSide& side);
  QString freshName(const QString& name) const;
  void chooseFile(CompareSide& side);
  void renderRows();
  void renderCounts(const std::vector<std::string>& counts);
  void renderNotUnderstood();
  void renderButtons();
  void swapSides();
  void copy() const;
  QString whyNotFillIn() const;
  void fillIn();

  const LastMenu& lastMenu_;
  CompareSide left_;
  CompareSide right_;
  std::vector<CompareSide> given_;    // fixed sides that were shown or read
  std::vector<CompareSide> history_;  // the menus before the last writes
  std::optional<std::pair<bool, std::optional<UUID>>> historyRead_;  // when it was read last
  SidePicker* leftPicker_;
  SidePicker* rightPicker_;
  QLabel* differing_;
  QLabel* others_;  // the other counts
  TickBox* onlyDifferent_;
  CompareHeader* header_;
  CompareModel* rows_;
  QListView* list_;
  QPlainTextEdit* notUnderstood_;
  Button* copy_;
  Button* fillIn_;
};

}  // namespace quorvane
