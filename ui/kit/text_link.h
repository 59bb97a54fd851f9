#pragma once

#include <QAbstractButton>

namespace quorvane {

// A word in a text that acts as a button.
class TextLink final : public QAbstractButton {
  Q_OBJECT

 public:
  explicit TextLink(const QString& word, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
