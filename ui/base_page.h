#pragma once

#include "ui/view.h"

class QLabel;

namespace quorvane {

class Button;
class FormRow;

// The section "Base": what is known of the connected base.
class BasePage final : public View {
  Q_OBJECT

 public:
  explicit BasePage(AppModel& model, QWidget* parent = nullptr);

 protected:
  void render() override;

 private:
  void renderIdentity();
  void renderMenu();

  FormRow* status_;
  FormRow* devices_;
  Button* readAgain_;
  FormRow* base_;
  FormRow* wheel_;
  FormRow* module_;
  FormRow* firmware_;
  FormRow* maxRotation_;
  FormRow* mode_;
  FormRow* activeSet_;
  FormRow* lastRead_;
  QLabel* noMenu_;
};

}  // namespace quorvane
