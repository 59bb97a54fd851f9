#include "cli/write_plan.h"

#include <algorithm>
#include <iterator>

#include "cli/json_output.h"
#include "presets/settings_comparison.h"
#include "protocol/error.h"
#include "protocol/menu_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// A value that would be written. Values are encoded as written to the base.
struct PlannedWrite {
  TuningParameter parameter = TuningParameter::slot;
  std::int64_t now = 0;
  std::optional<std::int64_t> then;  // what the base would keep; none with an error
  std::optional<std::string> error;
};

PlannedWrite planned(const Assignment& assignment, const TuningSnapshot& menu,
                     const std::optional<FanatecProduct>& product) {
  const TuningParameter parameter = assignment.parameter;
  PlannedWrite write{parameter, parameter.written(menu.settingValue(parameter, product), product),
                     std::nullopt, std::nullopt};
  const WantedValue wanted = wantedValue(assignment, menu, product);
  write.error = wanted.error;
  if (!wanted.value || wanted.error) return write;
  try {
    const std::uint8_t byte = parameter.encode(*wanted.value, product);
    write.then = parameter.written(parameter.decode(byte, product), product);
  } catch (const FanatecError& error) {
    write.error = error.errorDescription();
  }
  return write;
}

// The strength that the writes raise too far, if any.
std::optional<TuningParameter> strongerWrite(const std::vector<PlannedWrite>& writes,
                                             const TuningSnapshot& menu,
                                             const std::optional<FanatecProduct>& product) {
  TuningPreset::Values wanted;
  for (const PlannedWrite& write : writes) {
    if (write.then) wanted.emplace(write.parameter.code(), *write.then);
  }
  return strengthRaised(TuningPreset::capture(product, "", menu).values, wanted, product);
}

void print(const World& world, const PlannedWrite& write, bool isStronger,
           const std::optional<FanatecProduct>& product) {
  const std::string_view code = write.parameter.code();
  if (write.error) {
    printTo(world.out, "{:<4} not written: {}\n", code, oneLine(*write.error));
    return;
  }
  const std::string now = MenuText::shortText(write.parameter, write.now, product);
  const std::string then = MenuText::shortText(write.parameter, *write.then, product);
  if (write.now == *write.then) {
    printTo(world.out, "{:<4} {} (as it is)\n", code, then);
  } else {
    printTo(world.out, "{:<4} {} -> {}{}\n", code, now, then, isStronger ? " (stronger)" : "");
  }
}

Json writePlanJson(const std::vector<PlannedWrite>& writes,
                   std::optional<TuningParameter> stronger) {
  Json plan = Json::array();
  for (const PlannedWrite& write : writes) {
    plan.push_back({{"parameter", write.parameter.code()},
                    {"now", write.now},
                    {"then", write.then ? Json(*write.then) : Json(nullptr)},
                    {"error", write.error ? Json(*write.error) : Json(nullptr)}});
  }
  return {{"plan", std::move(plan)},
          {"stronger", stronger ? Json(stronger->code()) : Json(nullptr)}};
}

}  // namespace

ExitStatus printWritePlan(const CommandContext& context, WheelBase& base,
                          const std::vector<Assignment>& values) {
  const TuningSnapshot menu = base.fetchTuning(WheelBase::readTimeout);
  const std::optional<FanatecProduct> product = base.product();
  std::vector<PlannedWrite> writes;
  std::transform(values.begin(), values.end(), std::back_inserter(writes),
                 [&](const Assignment& value) { return planned(value, menu, product); });
  const auto stronger = strongerWrite(writes, menu, product);
  if (context.options.json) {
    printJson(context.world, writePlanJson(writes, stronger));
  } else {
    printTo(context.world.out, "To set {}, nothing written:\n", menu.setName());
    for (const PlannedWrite& write : writes) {
      print(context.world, write, write.parameter == stronger, product);
    }
  }
  const auto failures = std::count_if(writes.begin(), writes.end(), [](const PlannedWrite& write) {
    return write.error.has_value();
  });
  if (failures == 0) return ExitStatus::done;
  printTo(context.world.err, "{} of {} values cannot be written\n", failures, writes.size());
  return ExitStatus::failed;
}

}  // namespace quorvane
