#pragma once

#include <optional>

#include "protocol/tuning_parameter.h"
#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class Card;
class PresetValues;
class SidePanel;

// "What it does": what a setting does, what less and more feel like, facts, and what presets use.
class SettingHelpPanel final : public View {
  Q_OBJECT

 public:
  explicit SettingHelpPanel(AppModel& model, QWidget* parent = nullptr);

  // The setting to explain. Shows nothing before the first call.
  void explain(TuningParameter parameter);

  // Whether the keyboard can reach and scroll the text.
  void setScrollableByKeys(bool scrollable);

 protected:
  void render() override;

 private:
  QWidget* heading();
  void addFact(QLabel*& title, QLabel*& value, const QString& label, const char* objectName);
  void renderFacts();

  std::optional<TuningParameter> parameter_;
  SidePanel* panel_;
  QLabel* code_;
  QLabel* title_;
  QLabel* what_;
  QLabel* feel_;
  Card* facts_;
  QLabel* onBaseTitle_ = nullptr;
  QLabel* onBase_ = nullptr;
  QLabel* rangeTitle_ = nullptr;
  QLabel* range_ = nullptr;
  QLabel* factoryTitle_ = nullptr;
  QLabel* factory_ = nullptr;
  QLabel* worksWithTitle_ = nullptr;
  QLabel* worksWith_ = nullptr;
  Card* builtInCard_;
  PresetValues* builtIn_;
  Card* mineCard_;
  PresetValues* mine_;
};

}  // namespace quorvane
