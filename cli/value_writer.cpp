#include "cli/value_writer.h"

#include <algorithm>
#include <chrono>

#include "cli/json_output.h"
#include "cli/value_words.h"
#include "protocol/error.h"
#include "session/menu_writer.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// What became of one value.
struct Receipt {
  ParameterValue wanted;
  std::optional<std::int64_t> readBack;
  std::optional<std::string> error;
  std::int64_t milliseconds = 0;
};

std::int64_t readBackOf(const TuningSnapshot& snapshot, TuningParameter parameter,
                        const std::optional<FanatecProduct>& product) {
  return parameter == TuningParameter::slot ? snapshot.slot() : snapshot.value(parameter, product);
}

Receipt write(MenuWriter& writer, const std::optional<FanatecProduct>& product,
              const ParameterValue& wanted, Clock& clock) {
  Receipt receipt{wanted, std::nullopt, std::nullopt, 0};
  const auto begin = clock.now();
  try {
    const TuningSnapshot readBack = writer.write(wanted.parameter, wanted.value);
    receipt.readBack = readBackOf(readBack, wanted.parameter, product);
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
    printTo(world.out, "{:<4} not written: {}\n", parameter.code(), oneLine(*receipt.error));
  } else {
    printTo(world.out, "{:<4} {} ({} ms)\n", parameter.code(),
            valueText(parameter, *receipt.readBack, product), receipt.milliseconds);
  }
  flush(world.out);
}

Json receiptJson(const Receipt& receipt) {
  return {{"parameter", receipt.wanted.parameter.code()},
          {"value", receipt.wanted.value},
          {"readBack", receipt.readBack ? Json(*receipt.readBack) : Json(nullptr)},
          {"error", receipt.error ? Json(*receipt.error) : Json(nullptr)},
          {"milliseconds", receipt.milliseconds}};
}

void printJson(const World& world, const std::vector<Receipt>& receipts) {
  Json results = Json::array();
  for (const Receipt& receipt : receipts) results.push_back(receiptJson(receipt));
  printJson(world, {{"results", std::move(results)}});
}

void printInterruption(const World& world, const std::vector<ParameterValue>& wanted,
                       std::size_t done) {
  printTo(world.err, "Interrupted; not written:");
  for (std::size_t i = done; i < wanted.size(); ++i) {
    printTo(world.err, " {}", wanted[i].parameter.code());
  }
  printTo(world.err, "\n");
}

// One for each value that was tried.
std::vector<Receipt> writeEach(const CommandContext& context, const Interruption& interruption,
                               WheelBase& base, const std::vector<ParameterValue>& values) {
  MenuWriter writer(base, base.fetchTuning(WheelBase::readTimeout));
  std::vector<Receipt> receipts;
  for (const ParameterValue& wanted : values) {
    if (interruption.requested()) break;
    receipts.push_back(write(writer, base.product(), wanted, context.world.clock));
    if (!context.options.json) print(context.world, receipts.back(), base.product());
  }
  return receipts;
}

}  // namespace

ExitStatus writeValues(const CommandContext& context, const Interruption& interruption,
                       WheelBase& base, const std::vector<ParameterValue>& values) {
  const World& world = context.world;
  const std::vector<Receipt> receipts = writeEach(context, interruption, base, values);
  if (context.options.json) printJson(world, receipts);

  const auto failures = std::count_if(receipts.begin(), receipts.end(), [](const Receipt& receipt) {
    return receipt.error.has_value();
  });
  if (failures > 0) {
    printTo(world.err, "{} of {} values not written\n", failures, values.size());
  }
  if (interruption.requested()) {
    if (receipts.size() < values.size()) printInterruption(world, values, receipts.size());
    return ExitStatus::interrupted;
  }
  return failures > 0 ? ExitStatus::failed : ExitStatus::done;
}

}  // namespace quorvane
