#pragma once

#include <QWidget>
#include <optional>

#include "presets/tuning_preset.h"

namespace quorvane {

class BadgeLabel;
class Button;
class IconButton;
class PresetStrip;

// One preset: its name, game, publisher, notes and values, with buttons to load, apply and delete
// it.
class PresetRow final : public QWidget {
  Q_OBJECT

 public:
  // Shows the values of the product's settings.
  PresetRow(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
            QWidget* parent = nullptr);

  const TuningPreset& preset() const { return preset_; }

  // The width of the preset's notes in one line; 0 without notes. And the part of a row's height
  // that such notes take. Both allow to place rows that are not created yet.
  static int notesAdvance(const TuningPreset& preset);
  static int notesHeight(int advance, int rowWidth);

  // The reasons why it cannot be applied (or loaded) or deleted, and the progress of applying; each
  // may be empty.
  void show(const QString& whyNotApply, const QString& whyNotDelete, const QString& progress);
  using QWidget::show;

  // Shows what would be different at the base.
  void compare(const std::optional<TuningSnapshot>& menu);

  const PresetStrip& strip() const { return *strip_; }

  // The last control in the Tab order.
  QWidget* lastControl() const;

 signals:
  void loaded();
  void applied();
  void deleted();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* details();
  QWidget* values();

  const TuningPreset preset_;
  const std::optional<FanatecProduct> product_;
  PresetStrip* strip_;
  BadgeLabel* badge_;        // right of the values
  BadgeLabel* narrowBadge_;  // before the game, in narrow windows
  Button* load_;
  Button* apply_;
  IconButton* trash_ = nullptr;
};

}  // namespace quorvane
