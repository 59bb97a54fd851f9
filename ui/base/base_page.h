#pragma once

#include <QPointer>
#include <optional>
#include <vector>

#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class BaseList;
class Button;
class Card;
class CheckList;
class ConfirmDialog;
class FormPage;
class FormRow;

// The section "Base": the facts about the connected base, the other attached bases, and the
// doctor's checks when none works.
class BasePage final : public View {
  Q_OBJECT

 public:
  explicit BasePage(AppModel& model, QWidget* parent = nullptr);

 protected:
  void render() override;

 private:
  void addConnection();
  void addIdentity();
  void addMenu();
  std::vector<Card*> cards() const;
  void orderControls();
  void renderIdentity();
  void renderMenu();
  void renderTrouble();
  void renderQuestion();
  void copyReport();
  void choose(const HIDDeviceInfo& base);
  void ask(const HIDDeviceInfo& base);
  void connectTo(const HIDDeviceInfo& base);

  FormPage* page_;
  Card* connection_;
  FormRow* status_ = nullptr;
  FormRow* devices_ = nullptr;
  Button* readAgain_;
  Button* whyNotFound_;
  CheckList* checks_;
  BaseList* bases_;
  Card* identity_;
  FormRow* base_ = nullptr;
  FormRow* wheel_ = nullptr;
  FormRow* module_ = nullptr;
  FormRow* firmware_ = nullptr;
  FormRow* maxRotation_ = nullptr;
  Card* menu_;
  FormRow* mode_ = nullptr;
  FormRow* activeSet_ = nullptr;
  FormRow* lastRead_ = nullptr;
  QLabel* noMenu_ = nullptr;

  QPointer<ConfirmDialog> question_;    // while it is open
  std::optional<HIDDeviceInfo> asked_;  // the base that it is about
};

}  // namespace quorvane
