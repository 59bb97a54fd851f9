#include "ui/shell/shortcuts_sheet.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <array>

#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"

namespace quorvane {
namespace {

constexpr int columnGap = 20;
constexpr int rowGap = 6;
constexpr int explanationWidth = 380;

struct Key {
  const char* keys;
  const char* action;
};

constexpr std::array sheet{
    Key{"Ctrl+1 … Ctrl+5", "Base, Tuning, Presets, Tools, Log"},
    Key{"Ctrl+S", "Save to set. In another section it first brings Tuning to the front"},
    Key{"Ctrl+Shift+Z", "Discard all unsaved changes. The same holds in another section"},
    Key{"Ctrl+Z", "On Presets: take back the last change of a preset"},
    Key{"Ctrl+F, /", "On Presets: search"},
    Key{"Return, Ctrl+Return", "On a preset: load, apply now"},
    Key{"F2, Alt+Up, Alt+Down", "On a preset of your own: edit, move"},
    Key{"Esc", "End what is open or being typed; then, on Tuning, go to Discard"},
    Key{"Backspace, Delete", "On a changed row's slider or switch: back to the saved value"},
    Key{"Ctrl+R, F5", "Read again"},
    Key{"Ctrl+L", "Load preset…: find one by typing, and fill its values in"},
    Key{"Ctrl+Shift+S", "Save as preset…: name the menu that the base has now"},
    Key{"Ctrl+I", "Import…"},
    Key{"Ctrl+E", "Share…"},
    Key{"Arrow keys", "On a slider: one step. Up and Down in a number field: one step"},
    Key{"Page Up, Page Down", "On a slider: a tenth of its range"},
    Key{"Home, End", "On a slider: its ends"},
    Key{"Ctrl+C", "Copy the chosen lines of the log"},
    Key{"F1", "On a row of Tuning: what the setting does. Elsewhere: this sheet"},
    Key{"Ctrl+Q", "Quit"},
};

}  // namespace

ShortcutsSheet::ShortcutsSheet(QWidget* parent)
    : Dialog(QStringLiteral("Keyboard shortcuts"), parent) {
  setObjectName(QStringLiteral("shortcutsSheet"));
  auto* const grid = new QGridLayout;
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
  content().addLayout(grid);
  auto* const close = new Button(QStringLiteral("Close"));
  close->setObjectName(QStringLiteral("closeSheetButton"));
  close->setDefault(true);
  addButton(close, false);
  layout()->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace quorvane
