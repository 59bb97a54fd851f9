#include "ui/presets/preset_row.h"

#include <QGridLayout>
#include <QHBoxLayout>

#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/clipped_text.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/presets/badge_label.h"
#include "ui/presets/preset_strip.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int stripGap = 6;
constexpr int detailGap = 6;
constexpr int trashColumn = 28;
constexpr int columns = 4;

QFont notesFont() { return Metrics::font(Metrics::Type::callout); }

ElidedLabel* line(const std::string& words, Metrics::Type type, QPalette::ColorRole role,
                  const char* objectName) {
  auto* const label = new ElidedLabel(Qt::ElideRight);
  label->setText(text(words));
  label->setFont(Metrics::font(type));
  label->setForegroundRole(role);
  label->setObjectName(QString::fromLatin1(objectName));
  return label;
}

QHBoxLayout* bareLine(QWidget* parent, int spacing) {
  auto* const line = new QHBoxLayout(parent);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(spacing);
  return line;
}

}  // namespace

PresetRow::PresetRow(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
                     QWidget* parent)
    : QWidget(parent),
      preset_(preset),
      product_(product),
      strip_(new PresetStrip(preset, product)),
      badge_(new BadgeLabel),
      narrowBadge_(new BadgeLabel),
      load_(new Button(QStringLiteral("Load"))),
      apply_(new Button(QStringLiteral("Apply now"))) {
  const std::string name = oneLine(preset.name);
  setObjectName(QStringLiteral("preset-") + text(preset.id.text()));
  setAccessibleName(text(name));
  setAccessibleDescription(text(oneLine(preset.notes)));
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(Metrics::cardInset, Metrics::cardRowPadding, Metrics::cardInset,
                           Metrics::cardRowPadding);
  grid->setHorizontalSpacing(Metrics::gap);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(0, 1);
  grid->setColumnMinimumWidth(columns - 1, trashColumn);
  grid->addWidget(line(name, Metrics::Type::value, QPalette::WindowText, "presetName"), 0, 0);
  grid->addWidget(details(), 1, 0);
  if (!preset.notes.empty()) {
    auto* const notes = new ClippedText(text(oneLine(preset.notes)));
    notes->setObjectName(QStringLiteral("presetNotes"));
    notes->setFont(notesFont());
    notes->setForegroundRole(QPalette::Dark);
    grid->addWidget(notes, 2, 0, 1, columns);
  }
  grid->setRowMinimumHeight(3, stripGap);
  grid->addWidget(values(), 4, 0, 1, columns);

  load_->setObjectName(QStringLiteral("loadButton"));
  load_->setAccessibleName(QStringLiteral("Load, %1").arg(text(name)));
  connect(load_, &Button::clicked, this, &PresetRow::loaded);
  grid->addWidget(load_, 0, 1, 2, 1, Qt::AlignVCenter);
  apply_->setObjectName(QStringLiteral("applyButton"));
  apply_->setAccessibleName(QStringLiteral("Apply now, %1").arg(text(name)));
  connect(apply_, &Button::clicked, this, &PresetRow::applied);
  grid->addWidget(apply_, 0, 2, 2, 1, Qt::AlignVCenter);
  if (preset.isBuiltIn) return;
  trash_ = new IconButton(QStringLiteral("trash"), true);
  trash_->setObjectName(QStringLiteral("trashButton"));
  trash_->setAccessibleName(QStringLiteral("Delete preset, %1").arg(text(name)));
  connect(trash_, &IconButton::clicked, this, &PresetRow::deleted);
  grid->addWidget(trash_, 0, columns - 1, 2, 1, Qt::AlignCenter);
}

// "Gran Turismo 7 · Source: ..."
QWidget* PresetRow::details() {
  auto* const widget = new QWidget;
  QHBoxLayout* const row = bareLine(widget, detailGap);
  narrowBadge_->setObjectName(QStringLiteral("narrowPresetBadge"));
  narrowBadge_->hide();
  row->addWidget(narrowBadge_);
  if (!preset_.game.empty() && preset_.game != "Any") {
    auto* const game =
        line(oneLine(preset_.game), Metrics::Type::callout, QPalette::WindowText, "presetGame");
    game->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    row->addWidget(game);
    QLabel* const dot = PlainText::label(QStringLiteral("·"));
    dot->setFont(Metrics::font(Metrics::Type::callout));
    dot->setForegroundRole(QPalette::Dark);
    row->addWidget(dot);
  }
  const std::string source = preset_.source.empty() ? "none" : oneLine(preset_.source);
  row->addWidget(line("Source: " + source, Metrics::Type::callout, QPalette::Dark, "presetSource"),
                 1);
  return widget;
}

QWidget* PresetRow::values() {
  auto* const widget = new QWidget;
  QHBoxLayout* const row = bareLine(widget, Metrics::gap);
  strip_->setObjectName(QStringLiteral("presetValues"));
  row->addWidget(strip_, 1);
  badge_->setObjectName(QStringLiteral("presetBadge"));
  badge_->setFixedWidth(BadgeLabel::widest());
  row->addWidget(badge_, 0, Qt::AlignVCenter);
  return widget;
}

int PresetRow::notesAdvance(const TuningPreset& preset) {
  if (preset.notes.empty()) return 0;
  return QFontMetrics(notesFont()).horizontalAdvance(text(oneLine(preset.notes)));
}

int PresetRow::notesHeight(int advance, int rowWidth) {
  if (advance == 0) return 0;
  return ClippedText::height(advance, rowWidth - 2 * Metrics::cardInset, QFontMetrics(notesFont()));
}

void PresetRow::show(const QString& whyNotApply, const QString& whyNotDelete,
                     const QString& progress) {
  setAvailable(*load_, whyNotApply, QStringLiteral("Fill its values in as unsaved changes"));
  setAvailable(*apply_, whyNotApply);
  const QString word = progress.isEmpty() ? QStringLiteral("Apply now") : progress;
  if (apply_->text() != word) apply_->setText(word);
  if (trash_ != nullptr) {
    setAvailable(*trash_, whyNotDelete, QStringLiteral("Delete this preset"));
  }
}

void PresetRow::compare(const std::optional<TuningSnapshot>& menu) {
  strip_->compare(menu);
  const PresetBadge badge = presetBadge(preset_, menu, product_);
  badge_->show(badge);
  narrowBadge_->show(badge);
}

// The badge leaves the line of the values when these need all of its room.
void PresetRow::resizeEvent(QResizeEvent* /*event*/) {
  const int room = width() - 2 * Metrics::cardInset - Metrics::gap - BadgeLabel::widest();
  const bool isNarrow = room < strip_->narrowestLine();
  badge_->setVisible(!isNarrow);
  narrowBadge_->setVisible(isNarrow);
}

QWidget* PresetRow::lastControl() const {
  if (trash_ != nullptr) return trash_;
  return apply_;
}

}  // namespace quorvane
