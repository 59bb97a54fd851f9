#include "ui/presets/save_preset_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int nameWidth = 250;
constexpr int afterCaption = 14;
constexpr int fieldMargin = 6;

Button* button(const QString& word, const char* objectName) {
  auto* const button = new Button(word);
  button->setObjectName(QString::fromLatin1(objectName));
  return button;
}

}  // namespace

SavePresetBar::SavePresetBar(AppModel& model, QWidget* parent)
    : View(model, parent),
      column_(new QVBoxLayout(this)),
      row_(new QHBoxLayout),
      caption_(PlainText::label(QStringLiteral("Save the current menu as a preset"))),
      name_(new QLineEdit),
      save_(button(QStringLiteral("Save"), "savePresetButton")),
      import_(button(QStringLiteral("Import…"), "importButton")),
      export_(button(QStringLiteral("Export mine…"), "exportButton")) {
  setObjectName(QStringLiteral("savePresetBar"));
  setAccessibleName(QStringLiteral("Save the current menu as a preset"));
  caption_->setObjectName(QStringLiteral("savePresetCaption"));
  caption_->setFont(Metrics::font(Metrics::Type::caption));
  caption_->setForegroundRole(QPalette::Dark);
  caption_->setBuddy(name_);
  name_->setObjectName(QStringLiteral("presetNameField"));
  name_->setTextMargins(fieldMargin, 0, fieldMargin, 0);
  name_->setPlaceholderText(QStringLiteral("Preset name"));
  name_->setAccessibleName(QStringLiteral("Preset name"));
  name_->setFixedSize(nameWidth, Metrics::atLeast(Metrics::buttonHeight, font()));
  connect(name_, &QLineEdit::textChanged, this, [this] { render(); });
  connect(name_, &QLineEdit::returnPressed, this, &SavePresetBar::save);
  connect(save_, &Button::clicked, this, &SavePresetBar::save);
  connect(import_, &Button::clicked, this, [this] { this->model().importSettingsFile(); });
  connect(export_, &Button::clicked, this, [this] { this->model().exportPresets(); });

  column_->setSpacing(Metrics::gap - 2);
  row_->setSpacing(Metrics::gap);
  row_->addWidget(caption_);
  row_->addWidget(name_);
  row_->addWidget(save_);
  row_->addStretch();
  row_->addWidget(import_);
  row_->addWidget(export_);
  column_->addLayout(row_);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void SavePresetBar::focusName() { name_->setFocus(Qt::ShortcutFocusReason); }

// The trimmed name, as it will be saved.
std::string SavePresetBar::newName() const { return text(name_->text().trimmed()); }

QString SavePresetBar::whyNotSave() const {
  if (!model().tuning()) return QStringLiteral("Connect a base first: its menu is what gets saved");
  if (newName().empty()) return QStringLiteral("Type a name first");
  return {};
}

void SavePresetBar::save() {
  if (!whyNotSave().isEmpty()) return;
  model().saveCurrentAsPreset(newName());
  name_->clear();
}

void SavePresetBar::render() {
  setAvailable(*save_, whyNotSave());
  const QString wait = whyWait(model());
  setAvailable(*import_, wait, QStringLiteral("Load a settings file someone shared with you"));
  const QString none = model().userPresets().empty()
                           ? QStringLiteral("There is no preset of your own to export yet")
                           : QString();
  setAvailable(*export_, wait.isEmpty() ? none : wait,
               QStringLiteral("Write all your presets to one file"));
}

// The width of everything in one line, without insets.
int SavePresetBar::lineWidth() const {
  int width = QFontMetrics(caption_->font()).horizontalAdvance(caption_->text()) + afterCaption +
              name_->width();
  for (const Button* const each : {save_, import_, export_}) {
    width += each->sizeHint().width() + Metrics::gap;
  }
  return width;
}

// Places the caption before the name field, or above it where the line is too short for both.
void SavePresetBar::place() {
  const bool isNarrow = window()->width() < Metrics::narrowBelow;
  const int side = isNarrow ? Metrics::narrowInset : Metrics::pageInset;
  const int beyond = std::max(0, width() - Metrics::contentWidth);
  column_->setContentsMargins(visualMargins(
      *this, {side, Metrics::cardRowPadding + 1, side + beyond, Metrics::cardRowPadding}));
  const bool goesAbove = isNarrow || lineWidth() > width() - 2 * side - beyond;
  caption_->setContentsMargins(
      visualMargins(*this, {0, 0, goesAbove ? 0 : afterCaption - Metrics::gap, 0}));
  const bool isAbove = column_->indexOf(caption_) == 0;
  if (goesAbove == isAbove) return;
  if (goesAbove) {
    row_->removeWidget(caption_);
    column_->insertWidget(0, caption_);
  } else {
    column_->removeWidget(caption_);
    row_->insertWidget(0, caption_);
  }
}

void SavePresetBar::resizeEvent(QResizeEvent* event) {
  place();
  View::resizeEvent(event);
}

void SavePresetBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), theme().window);
  drawEdge(painter, rect(), Qt::TopEdge, theme().line);
}

}  // namespace quorvane
