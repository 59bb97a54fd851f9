#pragma once

#include <QWidget>
#include <optional>

#include "presets/tuning_preset.h"

namespace quorvane {

class Button;
class IconButton;

// One preset: its name, publisher and values, with buttons to apply and delete it.
class PresetRow final : public QWidget {
  Q_OBJECT

 public:
  // Shows the values of the product's settings.
  PresetRow(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
            QWidget* parent = nullptr);

  const TuningPreset& preset() const { return preset_; }

  // The reasons why it cannot be applied or deleted, and the progress of applying; each may be
  // empty.
  void show(const QString& whyNotApply, const QString& whyNotDelete, const QString& progress);
  using QWidget::show;

  // The last control in the Tab order.
  QWidget* lastControl() const;

 signals:
  void applied();
  void deleted();

 private:
  const TuningPreset preset_;
  Button* apply_;
  IconButton* trash_ = nullptr;
};

}  // namespace quorvane
