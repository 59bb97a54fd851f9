#pragma once

#include <QWidget>
#include <optional>

#include "presets/tuning_preset.h"

namespace quorvane {

class Button;
class IconButton;

// One preset: its name, who published it, its values, and what to do with it.
class PresetRow final : public QWidget {
  Q_OBJECT

 public:
  // The product's settings are shown.
  PresetRow(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
            QWidget* parent = nullptr);

  const TuningPreset& preset() const { return preset_; }

  // Why it cannot be applied, why it cannot be deleted, and how far applying is; each may be empty.
  void show(const QString& whyNotApply, const QString& whyNotDelete, const QString& progress);
  using QWidget::show;

  // In the Tab order.
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
