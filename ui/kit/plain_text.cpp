#include "ui/kit/plain_text.h"

#include <QAction>
#include <QLabel>
#include <QToolTip>
#include <QWidget>

namespace quorvane::PlainText {

QLabel* label(const QString& text, QWidget* parent) {
  auto* const label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setText(text);
  // Qt would align a text by its own direction, not by that of the layout.
  if (label->layoutDirection() == Qt::RightToLeft) {
    label->setAlignment(Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter);
  }
  return label;
}

// Tooltips have no plain-text mode: Qt guesses the format. Text that it could take for markup is
// escaped and wrapped in markup.
QString toolTip(const QString& text) {
  if (!Qt::mightBeRichText(text)) return text;
  return QStringLiteral("<p style='white-space:pre-wrap'>%1</p>").arg(text.toHtmlEscaped());
}

void setToolTip(QWidget& widget, const QString& text) { widget.setToolTip(toolTip(text)); }

void setToolTip(QAction& action, const QString& text) { action.setToolTip(toolTip(text)); }

void showToolTip(const QPoint& globalPosition, const QString& text, QWidget* widget) {
  QToolTip::showText(globalPosition, toolTip(text), widget);
}

void setWindowTitle(QWidget& window, const QString& text) {
  window.setWindowTitle(QString(text).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
}

QString withoutMnemonic(QString text) {
  return text.replace(QLatin1String("&"), QLatin1String("&&"));
}

}  // namespace quorvane::PlainText
