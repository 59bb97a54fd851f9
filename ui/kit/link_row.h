#pragma once

#include <QAbstractButton>
#include <QUrl>

namespace quorvane {

// A link with a symbol before it. A long text wraps.
class LinkRow final : public QAbstractButton {
  Q_OBJECT

 public:
  LinkRow(QString symbol, const QString& text, const QUrl& target, const QString& objectName,
          QWidget* parent = nullptr);

  const QUrl& target() const { return target_; }

  QSize sizeHint() const override;

  // As wide as the longest word.
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString symbol_;
  const QUrl target_;
};

}  // namespace quorvane
