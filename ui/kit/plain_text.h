#pragma once

#include <QString>

class QAction;
class QLabel;
class QPoint;
class QWidget;

// Shows text from files, devices and command lines literally. By default Qt renders text that looks
// like markup as markup, '&' as a mnemonic and "[*]" as a placeholder; with these functions every
// character is shown. scripts/check-words forbids Qt's own functions in ui/.
namespace quorvane::PlainText {

// A label that shows plain text only.
QLabel* label(const QString& text = {}, QWidget* parent = nullptr);

// Tooltips; they keep line breaks and repeated blanks.
void setToolTip(QWidget& widget, const QString& text);
void setToolTip(QAction& action, const QString& text);
void showToolTip(const QPoint& globalPosition, const QString& text, QWidget* widget);

// The text escaped for a tooltip, such as for Qt::ToolTipRole of an item model.
QString toolTip(const QString& text);

void setWindowTitle(QWidget& window, const QString& text);

// The text escaped for a menu entry or a button.
QString withoutMnemonic(QString text);

}  // namespace quorvane::PlainText
