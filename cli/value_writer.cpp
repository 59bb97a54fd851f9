#include "cli/value_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>

#include "cli/json_output.h"
#include "protocol/error.h"
#include "protocol/menu_text.h"
#include "session/menu_writer.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// The result of writing one value. `wanted` and `readBack` are encoded as written to the base.
struct Receipt {
  Assignment assignment;
  std::optional<std::int64_t> wanted;
  std::optional<std::int64_t> readBack;
  std::optional<std::string> error;
  std::int64_t milliseconds = 0;
  std::string text;  // of the value read back
};

// Writes one base's values, one after the other.
class ReceiptWriter {
 public:
  ReceiptWriter(WheelBase& base, const TuningSnapshot& menu, Clock& clock)
      : base_(base), clock_(clock), menu_(menu), writer_(base, menu) {}

  Receipt write(const Assignment& assignment) {
    Receipt receipt{assignment, std::nullopt, std::nullopt, std::nullopt, 0, ""};
    const auto begin = clock_.now();
    const WantedValue wanted = wantedValue(assignment, base_.tuning().value_or(menu_), product());
    receipt.error = wanted.error;
    if (wanted.value) {
      receipt.wanted = assignment.parameter.written(*wanted.value, product());
      if (!wanted.error) write(*wanted.value, receipt);
    }
    receipt.milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(clock_.now() - begin).count();
    return receipt;
  }

 private:
  std::optional<FanatecProduct> product() const { return base_.product(); }

  void write(std::int64_t value, Receipt& receipt) {
    const TuningParameter parameter = receipt.assignment.parameter;
    try {
      take(writer_.write(parameter, value).settingValue(parameter, product()), receipt);
    } catch (const FanatecError& error) {
      receipt.error = error.errorDescription();
      if (const auto* const ignored = std::get_if<FanatecError::WriteIgnored>(&error.value())) {
        take(ignored->readBack, receipt);
      }
    }
  }

  void take(std::int64_t readBack, Receipt& receipt) const {
    const TuningParameter parameter = receipt.assignment.parameter;
    receipt.readBack = parameter.written(readBack, product());
    receipt.text = MenuText::text(parameter, readBack, product());
  }

  WheelBase& base_;
  Clock& clock_;
  TuningSnapshot menu_;  // before the first write
  MenuWriter writer_;
};

// A note if the base stored another value than the wanted one, such as a rounded one.
std::optional<std::string> noteOn(const Receipt& receipt) {
  if (receipt.error || !receipt.readBack || receipt.readBack == receipt.wanted) return std::nullopt;
  const std::int64_t step = receipt.assignment.parameter.step();
  return fmt::format("{}, asked for {}{}", receipt.text, *receipt.wanted,
                     step > 1 ? fmt::format(", steps of {}", step) : "");
}

void print(const World& world, const Receipt& receipt) {
  const std::string_view code = receipt.assignment.parameter.code();
  if (receipt.error) {
    printTo(world.out, "{:<4} not written: {}\n", code, oneLine(*receipt.error));
  } else {
    printTo(world.out, "{:<4} {} ({} ms)\n", code, noteOn(receipt).value_or(receipt.text),
            receipt.milliseconds);
  }
  flush(world.out);
}

Json receiptJson(const Receipt& receipt) {
  Json document{{"parameter", receipt.assignment.parameter.code()},
                {"value", receipt.wanted ? Json(*receipt.wanted) : Json(nullptr)},
                {"readBack", receipt.readBack ? Json(*receipt.readBack) : Json(nullptr)},
                {"error", receipt.error ? Json(*receipt.error) : Json(nullptr)},
                {"milliseconds", receipt.milliseconds}};
  if (const auto note = noteOn(receipt)) document["note"] = *note;
  return document;
}

void printJson(const World& world, const std::vector<Receipt>& receipts) {
  Json results = Json::array();
  for (const Receipt& receipt : receipts) results.push_back(receiptJson(receipt));
  printJson(world, {{"results", std::move(results)}});
}

void printInterruption(const World& world, const std::vector<Assignment>& wanted,
                       std::size_t done) {
  printTo(world.err, "Interrupted; not written:");
  for (std::size_t i = done; i < wanted.size(); ++i) {
    printTo(world.err, " {}", wanted[i].parameter.code());
  }
  printTo(world.err, "\n");
}

// Returns a receipt for each value that was tried.
std::vector<Receipt> writeEach(const CommandContext& context, const Interruption& interruption,
                               WheelBase& base, const std::vector<Assignment>& values) {
  ReceiptWriter writer(base, base.fetchTuning(WheelBase::readTimeout), context.world.clock);
  std::vector<Receipt> receipts;
  for (const Assignment& assignment : values) {
    if (interruption.requested()) break;
    receipts.push_back(writer.write(assignment));
    if (!context.options.json) print(context.world, receipts.back());
  }
  return receipts;
}

}  // namespace

ExitStatus writeValues(const CommandContext& context, const Interruption& interruption,
                       WheelBase& base, const std::vector<Assignment>& values) {
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
