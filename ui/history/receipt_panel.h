#pragma once

#include <QPointer>

#include "ui/history/receipt_row.h"
#include "ui/model/view.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class TextLink;

// The receipt of the last write, over a page, above the bar that opened it: what became of each
// value. Closes with Esc, with the next write, and with its bar; then the button that opened it has
// the focus again.
class ReceiptPanel final : public View {
  Q_OBJECT

 public:
  // `page` is the parent.
  ReceiptPanel(AppModel& model, QWidget* page);

  // Shows the receipt above the bar that the button is in; closes it if this button has opened it.
  // Does nothing without a last write.
  void toggle(QWidget* button);

 protected:
  void render() override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void close();
  void fill(const AppModel::LastWrite& write);
  void placeSelf();
  void copy() const;

  QScrollArea* list_;
  ReceiptRow* head_;
  QVBoxLayout* rows_;
  QLabel* summary_;
  TextLink* copy_;
  ReceiptColumns columns_;
  QPointer<QWidget> opener_;
  std::optional<AppModel::LastWrite> shown_;
};

}  // namespace quorvane
