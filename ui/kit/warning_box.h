#pragma once

#include <QWidget>

class QLabel;

namespace quorvane {

// A warning with a heading and a text. It cannot be dismissed: it is shown as long as it applies.
class WarningBox final : public QWidget {
  Q_OBJECT

 public:
  WarningBox(const QString& heading, const QString& body, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
