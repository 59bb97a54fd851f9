#include <fmt/format.h>

#include <chrono>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "cli/value_words.h"
#include "protocol/error.h"

namespace quorvane {
namespace {

// What became of one value.
struct Receipt {
  Assignment wanted;
  std::optional<std::int64_t> readBack;
  std::optional<std::string> error;
  std::int64_t milliseconds = 0;
};

std::int64_t readBackOf(const TuningSnapshot& snapshot, TuningParameter parameter,
                        const std::optional<FanatecProduct>& product) {
  return parameter == TuningParameter::slot ? snapshot.slot() : snapshot.value(parameter, product);
}

Receipt write(WheelBase& base, const Assignment& wanted, Clock& clock) {
  Receipt receipt{wanted, std::nullopt, std::nullopt, 0};
  const auto begin = clock.now();
  try {
    // The session sends a set's number as it is.
    if (wanted.parameter == TuningParameter::slot) wanted.parameter.encode(wanted.value, {});
    const auto snapshot = base.set(wanted.parameter, wanted.value, true);
    receipt.readBack = readBackOf(*snapshot, wanted.parameter, base.product());
  } catch (const FanatecError& error) {
    receipt.error = error.errorDescription();
    if (const auto* const ignored = std::get_if<FanatecError::WriteIgnored>(&error.value())) {
      receipt.readBack = ignored->readBack;
    }
  }
  receipt.milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(clock.now() - begin).count();
  return receipt;
}

void print(const World& world, const Receipt& receipt,
           const std::optional<FanatecProduct>& product) {
  const TuningParameter parameter = receipt.wanted.parameter;
  if (receipt.error) {
    fmt::print(world.out, "{:<4} not written: {}\n", parameter.code(), *receipt.error);
  } else {
    fmt::print(world.out, "{:<4} {} ({} ms)\n", parameter.code(),
               valueText(parameter, *receipt.readBack, product), receipt.milliseconds);
  }
  std::fflush(world.out);
}

Json receiptJson(const Receipt& receipt) {
  return {{"parameter", receipt.wanted.parameter.code()},
          {"value", receipt.wanted.value},
          {"readBack", receipt.readBack ? Json(*receipt.readBack) : Json(nullptr)},
          {"error", receipt.error ? Json(*receipt.error) : Json(nullptr)},
          {"milliseconds", receipt.milliseconds}};
}

void printInterruption(const World& world, const std::vector<Assignment>& wanted,
                       std::size_t done) {
  fmt::print(world.err, "Interrupted; not written:");
  for (std::size_t i = done; i < wanted.size(); ++i) {
    fmt::print(world.err, " {}", wanted[i].parameter.code());
  }
  fmt::print(world.err, "\n");
}

}  // namespace

ExitStatus setCommand(const CommandContext& context, const std::vector<std::string>& words) {
  const World& world = context.world;
  const std::vector<Assignment> wanted = parseAssignments(words);
  const Interruption interruption = world.interruption();
  const OpenBase base(context);
  base->fetchTuning(WheelBase::readTimeout);

  Json results = Json::array();
  std::size_t done = 0;
  std::size_t failures = 0;
  for (; done < wanted.size() && !interruption.requested(); ++done) {
    const Receipt receipt = write(*base, wanted[done], world.clock);
    if (receipt.error) ++failures;
    if (context.options.json) {
      results.push_back(receiptJson(receipt));
    } else {
      print(world, receipt, base->product());
    }
  }
  if (context.options.json) printJson(world, {{"results", std::move(results)}});
  if (failures > 0) {
    fmt::print(world.err, "{} of {} values not written\n", failures, wanted.size());
  }
  if (interruption.requested()) {
    if (done < wanted.size()) printInterruption(world, wanted, done);
    return ExitStatus::interrupted;
  }
  return failures > 0 ? ExitStatus::failed : ExitStatus::done;
}

}  // namespace quorvane
