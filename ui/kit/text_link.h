#pragma once

#include <QAbstractButton>

namespace quorvane {

// A word in a line of text that does something.
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
