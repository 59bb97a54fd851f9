#pragma once

#include <QLabel>

#include "presets/tuning_preset.h"

namespace quorvane {

class TextLink;

// A preset's notes. If they need more than two lines, the second one is elided and "More" follows
// it, which shows all of them in place; "Less" goes back.
class PresetNotes final : public QLabel {
  Q_OBJECT

 public:
  explicit PresetNotes(const TuningPreset& preset, QWidget* parent = nullptr);

  // The width of the notes in one line; 0 without notes. And the height that such notes take while
  // they are not unfolded.
  static int advanceOf(const TuningPreset& preset);
  static int heightOf(int advance, int width);

  // Gives these words the ground of a search's hits.
  void highlight(const QStringList& words);

  bool isUnfolded() const { return isUnfolded_; }
  TextLink& link() const { return *link_; }

  int heightForWidth(int width) const override;
  QSize minimumSizeHint() const override { return {0, fontMetrics().height()}; }

 signals:
  // The notes were unfolded or folded: their height has changed.
  void toggled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QStringList linesFor(int width) const;
  void toggle();
  void placeLink();

  const QString all_;  // with its line breaks
  TextLink* link_;
  QStringList lines_;
  QStringList hits_;
  bool isUnfolded_ = false;
};

}  // namespace quorvane
