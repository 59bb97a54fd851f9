#pragma once

#include "ui/model/view.h"

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;

namespace quorvane {

class Button;

// The bar below the presets: saves the current menu as a new preset, imports and exports presets.
class SavePresetBar final : public View {
  Q_OBJECT

 public:
  explicit SavePresetBar(AppModel& model, QWidget* parent = nullptr);

  void focusName();

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::string newName() const;
  QString whyNotSave() const;
  void save();
  int lineWidth() const;
  void place();

  QVBoxLayout* column_;
  QHBoxLayout* row_;
  QLabel* caption_;
  QLineEdit* name_;
  Button* save_;
  Button* import_;
  Button* export_;
};

}  // namespace quorvane
