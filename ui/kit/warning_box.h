#pragma once

#include <QWidget>

class QLabel;

namespace quorvane {

// A warning that stays as long as its reason does.
class WarningBox final : public QWidget {
  Q_OBJECT

 public:
  WarningBox(const QString& heading, const QString& body, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace quorvane
