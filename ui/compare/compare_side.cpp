#include "ui/compare/compare_side.h"

#include <QDateTime>
#include <QLocale>
#include <utility>

#include "support/text.h"
#include "ui/kit/text.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

// "14:02", and the date before it unless it is today.
QString momentText(WallSeconds time) {
  const QDate date = QDateTime::fromSecsSinceEpoch(time.time_since_epoch().count()).date();
  QString clock = shortTimeText(time);
  if (date == QDate::currentDate()) return clock;
  return QLocale().toString(date, QLocale::ShortFormat) + QStringLiteral(", ") + clock;
}

CompareSide sideOfMenu(const HistoryRecord& record, const TuningSnapshot& menu,
                       const QString& when) {
  CompareSide side;
  side.kind = CompareSide::Kind::fixed;
  side.name = QStringLiteral("%1 %2 (%3)")
                  .arg(when, momentText(record.time), text(rawValue(record.action)));
  side.id = record.id;
  side.values = TuningPreset::capture(record.product(), {}, menu).values;
  return side;
}

}  // namespace

CompareSide CompareSide::ofPreset(const TuningPreset& preset) {
  return {Kind::preset, text(oneLine(preset.name)), preset.id, preset.values, {}};
}

CompareSide CompareSide::ofFile(const TuningPreset& preset) {
  CompareSide side = ofPreset(preset);
  side.kind = Kind::fixed;
  side.name = QStringLiteral("File: ") + side.name;
  return side;
}

CompareSide CompareSide::ofPasted(const TuningPreset& preset,
                                  std::vector<std::string> notUnderstood) {
  CompareSide side;
  side.kind = Kind::fixed;
  side.name = QStringLiteral("Pasted text");
  if (!preset.name.empty()) {
    side.name = QStringLiteral("Pasted: ") + text(oneLine(preset.name));
    side.id = preset.id;
  }
  side.values = preset.values;
  side.notUnderstood = std::move(notUnderstood);
  return side;
}

std::optional<CompareSide> CompareSide::before(const HistoryRecord& record) {
  if (!record.menu) return std::nullopt;
  return sideOfMenu(record, *record.menu, QStringLiteral("Before"));
}

std::optional<CompareSide> CompareSide::after(const HistoryRecord& record) {
  if (!record.outcome || !record.outcome->menu) return std::nullopt;
  return sideOfMenu(record, *record.outcome->menu, QStringLiteral("After"));
}

bool CompareSide::isSideOf(const CompareSide& other) const {
  if (kind != other.kind || id != other.id) return false;
  if (kind != Kind::fixed) return true;
  return values == other.values && notUnderstood == other.notUnderstood &&
         (!id || name == other.name);
}

}  // namespace quorvane
