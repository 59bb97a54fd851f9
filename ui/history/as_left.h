#pragma once

#include <QObject>
#include <optional>
#include <vector>

#include "app/app_model.h"

namespace quorvane {

// What the window has to say about values that are not as the user left them: once per connection,
// until they are, are filled in or dismissed, and until the next write or another set. What was
// dismissed is not said again before the next write, in later runs either. Main thread only.
class AsLeft final : public QObject {
  Q_OBJECT

 public:
  explicit AsLeft(AppModel& model, QObject* parent = nullptr);

  // The values as they were, in menu order. Empty when there is nothing to say.
  const std::vector<ParameterValue>& values() const { return values_; }

  // "Two values are not as you left them".
  QString title() const;

  // "yesterday 22:10: FF 65 → 100, NDP 25 → 50", for the time `now`.
  QString note(WallClock::time_point now) const;

  // "yesterday 22:10 (set A does that when switched on)".
  QString noteInSetA(WallClock::time_point now) const;

  // Asks for the comparison of what the record left with what the base has.
  void compare();

  // Stages the values.
  void fillIn();

  void dismiss();

 signals:
  void compareAsked(const quorvane::HistoryRecord& record);

  // The values were filled in or dismissed. What else changes them comes from the model.
  void ended();

 private:
  void follow();
  void end();
  QString stateKey() const;

  AppModel& model_;
  std::optional<NotAsLeft> current_;
  std::vector<ParameterValue> values_;
  bool isOver_ = false;
};

}  // namespace quorvane
