#pragma once

#include <QObject>

class QWidget;

namespace quorvane {

class AppModel;
class AsLeft;
class AutoSetWarning;
struct HistoryRecord;
class ReceiptPanel;
class SaveBar;
class SavedBar;
class TuningPage;

// Adds to the section "Tuning" what tells about writes: the bar of the last one with its receipt,
// and the bars about values that are not as the user left them. Each is created when it is first
// needed.
class HistoryBars final : public QObject {
  Q_OBJECT

 public:
  // The page, which has the two bars, becomes the parent.
  HistoryBars(AppModel& model, TuningPage& page, AutoSetWarning& warning, SaveBar& saveBar);

 signals:
  // The user wants to compare what this record left with what the base has.
  void compareAsked(const quorvane::HistoryRecord& record);

 private:
  void follow();
  void addSavedBar();
  void addNotAsLeftBars();
  void showReceipt(QWidget* button);

  AppModel& model_;
  TuningPage& page_;
  AutoSetWarning& warning_;
  AsLeft* asLeft_;
  SavedBar* savedBar_ = nullptr;
  ReceiptPanel* receipt_ = nullptr;
  bool hasNotAsLeftBars_ = false;
};

}  // namespace quorvane
