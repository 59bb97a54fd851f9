#pragma once

#include <QScrollArea>
#include <vector>

class QVBoxLayout;

namespace quorvane {

// The scrolled part of the page "Presets": groups below each other.
class PresetScroll final : public QScrollArea {
  Q_OBJECT

 public:
  explicit PresetScroll(const std::vector<QWidget*>& groups, QWidget* parent = nullptr);

  // The visible part of a widget in it, in the widget's coordinates.
  QRect visiblePart(const QWidget& widget) const;

  // Updates the layout at once, from the widget up to the page.
  void layOut(const QWidget& changed);

  // Updates the layout, then scrolls by `distance` pixels.
  void scrollBy(int distance, const QWidget& changed);

  // Updates the layout, then scrolls until the widget is visible.
  void reveal(QWidget& widget);

 signals:
  // The visible part has changed.
  void scrolled();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QVBoxLayout* column_;
};

}  // namespace quorvane
