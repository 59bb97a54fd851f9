#pragma once

#include <QStringList>

#include "presets/tuning_preset.h"
#include "ui/kit/dialog.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QVBoxLayout;

namespace quorvane {

class Button;

// Edits a preset's name, game, source and notes. Return saves, except in the notes; Ctrl+Return
// saves there.
class EditPresetDialog final : public Dialog {
  Q_OBJECT

 public:
  // Offers these games; others can be typed.
  EditPresetDialog(const TuningPreset& preset, const QStringList& games, QWidget* parent);

 signals:
  void saved(const quorvane::TuningPreset& before, const quorvane::TuningPreset& after);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void buildFields(const QStringList& games);
  void addField(const QString& label, QWidget* field);
  TuningPreset edited() const;
  void renderButton();

  const TuningPreset preset_;
  QVBoxLayout* fields_;
  QLineEdit* name_;
  QComboBox* game_;
  QLineEdit* source_;
  QPlainTextEdit* notes_;
  Button* save_;
};

}  // namespace quorvane
