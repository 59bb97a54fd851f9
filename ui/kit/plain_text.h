#pragma once

#include <QString>

class QAction;
class QLabel;
class QPoint;
class QWidget;

// Text from files, devices and command lines, shown as it is. The toolkit takes text that looks
// like markup for markup, reads '&' as a mnemonic and "[*]" as a placeholder; what is made and set
// here shows every character. scripts/check-words keeps the other ways out of ui/.
namespace quorvane::PlainText {

// A label that shows plain text only.
QLabel* label(const QString& text = {}, QWidget* parent = nullptr);

// Tooltips. Line breaks and runs of blanks are kept.
void setToolTip(QWidget& widget, const QString& text);
void setToolTip(QAction& action, const QString& text);
void showToolTip(const QPoint& globalPosition, const QString& text, QWidget* widget);

// The text in the form that a tooltip shows plainly: what an item model gives as Qt::ToolTipRole.
QString toolTip(const QString& text);

void setWindowTitle(QWidget& window, const QString& text);

// The text in the form that a menu entry or a button shows plainly.
QString withoutMnemonic(QString text);

}  // namespace quorvane::PlainText
