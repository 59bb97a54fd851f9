#include "ui/presets/preset_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <initializer_list>

#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/side_panel.h"
#include "ui/kit/text.h"
#include "ui/kit/wrapped_label.h"
#include "ui/presets/change_table.h"

namespace quorvane {
namespace {

constexpr int presetPanelGap = 10;

// "9 differ from the base, 7 are the same".
QString countOf(std::size_t differing, std::size_t same, bool hasMenu) {
  if (!hasMenu) return QStringLiteral("Values");
  if (differing == 0) return QStringLiteral("All %1 are on the base now").arg(same);
  return QStringLiteral("%1 %2 from the base, %3 %4 the same")
      .arg(differing)
      .arg(differing == 1 ? QStringLiteral("differs") : QStringLiteral("differ"))
      .arg(same)
      .arg(same == 1 ? QStringLiteral("is") : QStringLiteral("are"));
}

}  // namespace

PresetPanel::PresetPanel(AppModel& model, QWidget* parent)
    : View(model, parent),
      name_(wrappedLabel("panelPresetName", Metrics::Type::dialogTitle, QPalette::WindowText)),
      details_(wrappedLabel("panelPresetDetails", Metrics::Type::callout, QPalette::Dark)),
      notes_(wrappedLabel("panelPresetNotes", Metrics::Type::body, QPalette::WindowText)),
      count_(wrappedLabel("panelPresetCount", Metrics::Type::caption, QPalette::Dark)),
      changes_(new ChangeTable),
      compare_(new Button(QStringLiteral("Compare…"))),
      edit_(new Button(QStringLiteral("Edit…"))) {
  setObjectName(QStringLiteral("presetPanel"));
  setAccessibleName(QStringLiteral("Chosen preset"));
  changes_->setObjectName(QStringLiteral("panelPresetChanges"));
  compare_->setObjectName(QStringLiteral("panelCompareButton"));
  connect(compare_, &Button::clicked, this, [this] { emit compareAsked(*preset_); });
  edit_->setObjectName(QStringLiteral("panelEditButton"));
  connect(edit_, &Button::clicked, this, [this] { emit editAsked(*preset_); });
  QVBoxLayout& column = SidePanel::in(*this)->column();
  column.setSpacing(presetPanelGap);
  for (QWidget* const part :
       std::initializer_list<QWidget*>{name_, details_, notes_, count_, changes_}) {
    column.addWidget(part);
  }
  auto* const buttons = new QHBoxLayout;
  buttons->setSpacing(Metrics::gap);
  buttons->addWidget(compare_);
  buttons->addWidget(edit_);
  buttons->addStretch();
  column.addLayout(buttons);
  column.addStretch();
}

void PresetPanel::explain(const TuningPreset& preset) {
  if (preset_ == preset) return;
  preset_ = preset;
  render();
}

void PresetPanel::render() {
  if (!preset_) return;
  name_->setText(text(oneLine(preset_->name)));
  QString details =
      QStringLiteral("Source: ") +
      (preset_->source.empty() ? QStringLiteral("none") : text(oneLine(preset_->source)));
  if (!preset_->game.empty() && preset_->game != "Any") {
    details = text(oneLine(preset_->game)) + QStringLiteral(" · ") + details;
  }
  details_->setText(details);
  notes_->setText(text(safeLines(preset_->notes)));
  notes_->setVisible(!preset_->notes.empty());
  const std::size_t same = changes_->show(*preset_, model().tuning(), model().product());
  count_->setText(countOf(changes_->count(), same, model().tuning().has_value()));
  edit_->setVisible(!preset_->isBuiltIn);
}

}  // namespace quorvane
