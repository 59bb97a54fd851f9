#include "ui/shell/shortcuts_sheet.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"

namespace quorvane {
namespace {

constexpr int columnGap = 20;
constexpr int rowGap = 6;
constexpr int explanationWidth = 380;
constexpr int aroundTable = 160;  // the least height of the window above and below the table

struct Key {
  const char* keys;
  const char* action;
};

constexpr std::array sheet{
    Key{"Ctrl+1 … Ctrl+5", "Base, Tuning, Presets, Tools, Log"},
    Key{"Ctrl+S", "Save to set. In another section it first brings Tuning to the front"},
    Key{"Ctrl+Shift+Z", "Discard all unsaved changes. The same holds in another section"},
    Key{"Ctrl+Z",
        "Take back the last edit, or undo the last write. On Presets: the last change of one"},
    Key{"Ctrl+Y", "Redo what was undone last"},
    Key{"Ctrl+L", "Load preset…: find one by typing, and fill its values in"},
    Key{"Ctrl+D", "Compare…: what differs between the base and a preset"},
    Key{"Ctrl+V", "Compare the settings in the text on the clipboard with the base"},
    Key{"Ctrl+A, Space, Ctrl+Return", "In Compare: tick all, tick a row, fill the ticked ones in"},
    Key{"Ctrl+Shift+S", "Save as preset…: name the menu that the base has now"},
    Key{"Ctrl+H", "History…: what was written to the base, and back to before it"},
    Key{"Ctrl+I", "Import…"},
    Key{"Ctrl+E", "Share…"},
    Key{"Ctrl+R, F5", "Read again"},
    Key{"Esc", "End what is open or being typed; then, on Tuning, go to Discard"},
    Key{"Arrow keys", "On a slider: one step. Up and Down in a number field: one step"},
    Key{"Page Up, Page Down", "On a slider: a tenth of its range"},
    Key{"Home, End", "On a slider: its ends"},
    Key{"Digits, Return, F2", "On a row of Tuning: type a value"},
    Key{"Space", "On a row of Tuning with AUTO or OFF: switch to it and back"},
    Key{"Backspace, Delete", "On a changed row of Tuning: back to the saved value"},
    Key{"Ctrl+Up, Ctrl+Down", "On Tuning: the row above or below"},
    Key{"Ctrl+Return", "On a row of Tuning that the base did not take: try again"},
    Key{"Ctrl+F, /", "On Presets: search"},
    Key{"Up, Down, Home, End", "On a preset: to another one"},
    Key{"Return, Ctrl+Return", "On a preset: load it, apply it now"},
    Key{"Right, Left", "On a preset: its buttons"},
    Key{"F2, Delete, Ctrl+C", "On a preset: edit it, delete it, copy its values as text"},
    Key{"Alt+Up, Alt+Down", "On a preset of your own: move it"},
    Key{"Menu, Shift+F10", "On a preset: open its menu"},
    Key{"Return, Ctrl+Return, Esc", "In the history: compare, fill in the values before, close it"},
    Key{"Ctrl+C", "Copy the chosen lines of the log"},
    Key{"F1", "On a row of Tuning: what the setting does. Elsewhere: this sheet"},
    Key{"Ctrl+Q", "Quit"},
};

// The keys at the left, what they do at the right.
QWidget* keyTable() {
  auto* const table = new QWidget;
  auto* const grid = new QGridLayout(table);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(columnGap);
  grid->setVerticalSpacing(rowGap);
  int row = 0;
  for (const Key& key : sheet) {
    QLabel* const keys = PlainText::label(QString::fromUtf8(key.keys));
    keys->setFont(Metrics::font(Metrics::Type::fixed));
    keys->setForegroundRole(QPalette::Dark);
    QLabel* const action = PlainText::label(QString::fromUtf8(key.action));
    action->setWordWrap(true);
    action->setFixedWidth(explanationWidth);
    grid->addWidget(keys, row, 0, Qt::AlignTop);
    grid->addWidget(action, row++, 1);
  }
  return table;
}

// Shows the table, at most this high.
QScrollArea* scrolling(QWidget* table, int highest) {
  auto* const scroll = new QScrollArea;
  scroll->setObjectName(QStringLiteral("shortcutsScroll"));
  scroll->setAccessibleName(QStringLiteral("Keyboard shortcuts"));
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidget(table);
  table->adjustSize();
  const int bar = scroll->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scroll);
  scroll->setFixedSize(table->width() + bar, std::min(table->height(), highest));
  return scroll;
}

}  // namespace

ShortcutsSheet::ShortcutsSheet(QWidget* parent)
    : Dialog(QStringLiteral("Keyboard shortcuts"), parent) {
  setObjectName(QStringLiteral("shortcutsSheet"));
  content().addWidget(scrolling(keyTable(), parent->window()->height() - aroundTable));
  auto* const close = new Button(QStringLiteral("Close"));
  close->setObjectName(QStringLiteral("closeSheetButton"));
  close->setDefault(true);
  addButton(close, false);
  layout()->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace quorvane
