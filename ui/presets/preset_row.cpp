#include "ui/presets/preset_row.h"

#include <QGridLayout>

#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/presets/preset_strip.h"

namespace quorvane {
namespace {

constexpr int stripGap = 6;
constexpr int trashColumn = 28;

ElidedLabel* line(const std::string& words, Metrics::Type type, QPalette::ColorRole role,
                  const char* objectName) {
  auto* const label = new ElidedLabel(Qt::ElideRight);
  label->setText(text(words));
  label->setFont(Metrics::font(type));
  label->setForegroundRole(role);
  label->setObjectName(QString::fromLatin1(objectName));
  return label;
}

}  // namespace

PresetRow::PresetRow(const TuningPreset& preset, const std::optional<FanatecProduct>& product,
                     QWidget* parent)
    : QWidget(parent), preset_(preset), apply_(new Button(QStringLiteral("Apply now"))) {
  const std::string name = oneLine(preset.name);
  setObjectName(QStringLiteral("preset-") + text(preset.id.text()));
  setAccessibleName(text(name));
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(Metrics::cardInset, Metrics::cardRowPadding, Metrics::cardInset,
                           Metrics::cardRowPadding);
  grid->setHorizontalSpacing(Metrics::gap);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(0, 1);
  grid->setColumnMinimumWidth(2, trashColumn);
  grid->addWidget(line(name, Metrics::Type::value, QPalette::WindowText, "presetName"), 0, 0);
  const std::string source = preset.source.empty() ? "none" : oneLine(preset.source);
  grid->addWidget(line("Source: " + source, Metrics::Type::callout, QPalette::Dark, "presetSource"),
                  1, 0);
  grid->setRowMinimumHeight(2, stripGap);
  auto* const strip = new PresetStrip(preset, product);
  strip->setObjectName(QStringLiteral("presetValues"));
  grid->addWidget(strip, 3, 0, 1, 3);

  apply_->setObjectName(QStringLiteral("applyButton"));
  apply_->setAccessibleName(QStringLiteral("Apply now, %1").arg(text(name)));
  connect(apply_, &Button::clicked, this, &PresetRow::applied);
  grid->addWidget(apply_, 0, 1, 2, 1, Qt::AlignVCenter);
  if (preset.isBuiltIn) return;
  trash_ = new IconButton(QStringLiteral("trash"), true);
  trash_->setObjectName(QStringLiteral("trashButton"));
  trash_->setAccessibleName(QStringLiteral("Delete preset, %1").arg(text(name)));
  connect(trash_, &IconButton::clicked, this, &PresetRow::deleted);
  grid->addWidget(trash_, 0, 2, 2, 1, Qt::AlignCenter);
}

void PresetRow::show(const QString& whyNotApply, const QString& whyNotDelete,
                     const QString& progress) {
  setAvailable(*apply_, whyNotApply);
  const QString word = progress.isEmpty() ? QStringLiteral("Apply now") : progress;
  if (apply_->text() != word) apply_->setText(word);
  if (trash_ != nullptr) {
    setAvailable(*trash_, whyNotDelete, QStringLiteral("Delete this preset"));
  }
}

QWidget* PresetRow::lastControl() const {
  if (trash_ != nullptr) return trash_;
  return apply_;
}

}  // namespace quorvane
