#include "ui/compare/compare_line.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "support/text.h"
#include "ui/kit/text.h"
#include "ui/model/menu_text.h"

namespace quorvane {
namespace {

using Product = std::optional<FanatecProduct>;

CompareValue compareValueOn(const ComparedRow& row, const std::optional<std::int64_t>& value,
                            const Product& product) {
  if (!value) return {QStringLiteral("·"), {}};
  if (!row.parameter) return {QString::number(*value), {}};
  const bool isWord = !MenuText::word(*row.parameter, *value, product).empty();
  return {text(MenuText::presetText(*row.parameter, *value, product)),
          isWord ? QString() : text(row.parameter->unit())};
}

// "+35", with a minus sign as long as the plus.
QString signedNumber(std::int64_t change) {
  const QString sign = change < 0 ? QStringLiteral("−") : QStringLiteral("+");
  return sign + QString::number(std::abs(change));
}

// What a word on a side means for the change.
QString wordsOfChange(const ComparedRow& row, const Product& product) {
  const TuningParameter parameter = *row.parameter;
  const SettingInfo& setting = settingOf(parameter);
  if (!setting.valueLabels.labels.empty()) {
    return text(
        setting.valueLabels.labels[static_cast<std::size_t>(*row.right - setting.range.lower)]
            .choice);
  }
  const bool isOn = parameter.isSpecial(*row.right, product);
  if (parameter == TuningParameter::sensitivity) {
    return isOn ? QStringLiteral("automatic angle") : QStringLiteral("fixed angle");
  }
  return isOn ? QStringLiteral("switched off") : QStringLiteral("switched on");
}

QString spokenCompareValue(const CompareValue& value) {
  if (value.number == QStringLiteral("·")) return QStringLiteral("none");
  return value.unit.isEmpty() ? value.number : value.number + u' ' + value.unit;
}

}  // namespace

QString CompareLine::spoken() const {
  QString line = QStringLiteral("%1, %2, %3, %4, %5")
                     .arg(code, title, spokenCompareValue(left), spokenCompareValue(right),
                          number.isEmpty() ? words : number);
  if (isStronger) line += QStringLiteral(", stronger");
  return line;
}

CompareLine compareLine(const ComparedRow& row, const SettingsComparison& comparison,
                        const Product& product, const OneSidedWords& words) {
  CompareLine line;
  line.code = text(oneLine(row.code));
  line.title = row.parameter ? text(row.title()) : QStringLiteral("No setting of the menu");
  line.left = compareValueOn(row, row.left, product);
  line.right = compareValueOn(row, row.right, product);
  line.isDifferent = row.state == ComparedState::differs || row.state == ComparedState::outOfRange;
  line.isTickable = row.state == ComparedState::differs || row.state == ComparedState::onlyRight;
  line.isStronger = row.parameter && row.parameter == comparison.stronger();
  const auto change = row.change(product);
  if (change) {
    line.number = signedNumber(*change);
    line.distance = {placeInRange(*row.parameter, *row.left, product).value_or(0),
                     placeInRange(*row.parameter, *row.right, product).value_or(0)};
  } else if (row.state == ComparedState::differs) {
    line.words = wordsOfChange(row, product);
  } else {
    line.words = text(comparedStateText(row.state, words));
  }
  return line;
}

}  // namespace quorvane
