#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <string>

#include "cli/commands.h"
#include "cli/diff_sides.h"
#include "cli/json_output.h"
#include "cli/not_understood.h"
#include "presets/comparison_text.h"
#include "presets/settings_comparison.h"
#include "protocol/menu_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

using State = ComparedState;

// As of diff(1).
constexpr ExitStatus sidesDiffer = ExitStatus::failed;
constexpr ExitStatus diffTrouble = ExitStatus::wrongUsage;

constexpr std::array allStates{State::same,      State::differs,    State::onlyLeft,
                               State::onlyRight, State::outOfRange, State::notOnBase};

using Value = std::optional<std::int64_t>;

std::string sideValue(const ComparedRow& row, const Value& value,
                      const std::optional<FanatecProduct>& product) {
  if (!value) return "-";
  if (!row.parameter) return std::to_string(*value);
  if (row.parameter->isSpecial(*value, product)) {
    return MenuText::presetText(*row.parameter, *value, product);
  }
  return MenuText::shortText(*row.parameter, *value, product);
}

// "+35" for numbers that differ, else what the state is.
std::string comparedChange(const ComparedRow& row, const std::optional<FanatecProduct>& product) {
  if (row.state != State::differs) return std::string(comparedStateText(row.state));
  const Value change = row.change(product);
  return change ? fmt::format("{:+}", *change) : "";
}

const ComparedRow* strongerRow(const SettingsComparison& comparison) {
  for (const ComparedRow& row : comparison.rows()) {
    if (row.parameter && row.parameter == comparison.stronger()) return &row;
  }
  return nullptr;
}

// Whether only the base has a value: the other side leaves the setting as it is.
bool isLeftAlone(const ComparedRow& row, const DiffSides& sides) {
  return (sides.left.isBase() && !row.right) || (sides.right.isBase() && !row.left);
}

// Whether the row makes the sides different. A setting that the base lacks does not make a preset
// different from the base.
bool isDifference(const ComparedRow& row, const DiffSides& sides) {
  if (row.state == State::notOnBase) {
    return row.left != row.right && !sides.left.isBase() && !sides.right.isBase();
  }
  return row.state != State::same && !isLeftAlone(row, sides);
}

bool areSame(const DiffSides& sides, const SettingsComparison& comparison) {
  return std::none_of(comparison.rows().begin(), comparison.rows().end(),
                      [&](const ComparedRow& row) { return isDifference(row, sides); });
}

void printComparison(const World& world, const DiffSides& sides,
                     const SettingsComparison& comparison) {
  if (const ComparedRow* const row = strongerRow(comparison)) {
    printTo(world.out, "Stronger: {} {} -> {}\n", row->code,
            sideValue(*row, row->left, sides.product), sideValue(*row, row->right, sides.product));
  }
  printTo(world.out, "Left:  {}\nRight: {}\n\n", oneLine(sides.left.name),
          oneLine(sides.right.name));
  bool areRows = false;
  for (const ComparedRow& row : comparison.rows()) {
    if (row.state == State::same || isLeftAlone(row, sides)) continue;
    areRows = true;
    printTo(world.out, "  {:<4} {:<9} {:<9} {:<16} {}\n", oneLine(row.code),
            sideValue(row, row.left, sides.product), sideValue(row, row.right, sides.product),
            comparedChange(row, sides.product),
            row.parameter ? row.title() : "(no setting of the menu)");
  }
  printTo(world.out, "{}{}\n", areRows ? "\n" : "",
          fmt::join(comparedCountTexts(comparison), ", "));
}

Json sideJson(const DiffSide& side) {
  return {{"kind", side.kind}, {"name", side.name}, {"notUnderstood", side.notUnderstood}};
}

Json comparedRowJson(const ComparedRow& row, const std::optional<FanatecProduct>& product) {
  const auto number = [](const Value& value) { return value ? Json(*value) : Json(nullptr); };
  return {{"code", row.code},
          {"title", row.title()},
          {"left", number(row.left)},
          {"right", number(row.right)},
          {"change", number(row.change(product))},
          {"state", rawValue(row.state)}};
}

Json comparisonJson(const DiffSides& sides, const SettingsComparison& comparison) {
  Json rows = Json::array();
  for (const ComparedRow& row : comparison.rows())
    rows.push_back(comparedRowJson(row, sides.product));
  Json counts = Json::object();
  for (const State state : allStates) {
    counts[std::string(rawValue(state))] = comparison.count(state);
  }
  const auto stronger = comparison.stronger();
  return {{"left", sideJson(sides.left)},
          {"right", sideJson(sides.right)},
          {"isSame", areSame(sides, comparison)},
          {"stronger", stronger ? Json(stronger->code()) : Json(nullptr)},
          {"rows", std::move(rows)},
          {"counts", std::move(counts)}};
}

// Whether everything was written so far. A result that could not be written is no result.
bool isAllWritten(std::FILE* stream) {
  flush(stream);
  return std::ferror(stream) == 0;
}

}  // namespace

ExitStatus diffCommand(const CommandContext& context, const std::vector<std::string>& words) {
  const World& world = context.world;
  const DiffSides sides = readDiffSides(context, words);
  const SettingsComparison comparison(sides.left.values, sides.right.values, sides.product);
  for (const DiffSide* const side : {&sides.left, &sides.right}) {
    printNotUnderstood(world, side->notUnderstood);
  }
  if (context.options.json) {
    printJson(world, comparisonJson(sides, comparison));
  } else {
    printComparison(world, sides, comparison);
  }
  if (!isAllWritten(world.out)) return diffTrouble;
  return areSame(sides, comparison) ? ExitStatus::done : sidesDiffer;
}

}  // namespace quorvane
