#include "cli/value_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>
#include <utility>

#include "cli/recording.h"
#include "protocol/menu_text.h"
#include "session/receipt_writer.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

using Assignments = std::span<const Assignment>;

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
class AssignmentWriter {
 public:
  AssignmentWriter(WheelBase& base, const TuningSnapshot& menu, Clock& clock)
      : base_(base), menu_(menu), writer_(base, menu, clock) {}

  Receipt write(const Assignment& assignment) {
    const TuningParameter parameter = assignment.parameter;
    const WantedValue wanted = wantedValue(assignment, base_.tuning().value_or(menu_), product());
    Receipt receipt{assignment, wanted.value, std::nullopt, wanted.error, 0, ""};
    if (wanted.value) receipt.wanted = parameter.written(*wanted.value, product());
    if (wanted.error) return receipt;
    const ValueReceipt written = written_.emplace_back(writer_.write(parameter, *wanted.value));
    receipt.readBack = written.readBack;
    receipt.error = written.error;
    receipt.milliseconds = written.milliseconds;
    if (written.readBack) receipt.text = textOf(parameter, *written.readBack);
    return receipt;
  }

  // The values that were tried.
  std::vector<ValueReceipt> takeWritten() { return std::exchange(written_, {}); }

 private:
  std::optional<FanatecProduct> product() const { return base_.product(); }

  std::string textOf(TuningParameter parameter, std::int64_t value) const {
    return parameter.isSpecial(value, product()) ? MenuText::word(parameter, value, product())
                                                 : MenuText::text(parameter, value, product());
  }

  WheelBase& base_;
  TuningSnapshot menu_;  // before the first write
  ReceiptWriter writer_;
  std::vector<ValueReceipt> written_;
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

Json resultsJson(const std::vector<Receipt>& receipts) {
  Json results = Json::array();
  for (const Receipt& receipt : receipts) results.push_back(receiptJson(receipt));
  return results;
}

void printInterruption(const World& world, const std::vector<Assignment>& wanted,
                       std::size_t done) {
  printTo(world.err, "Interrupted; not written:");
  for (std::size_t i = done; i < wanted.size(); ++i) {
    printTo(world.err, " {}", wanted[i].parameter.code());
  }
  printTo(world.err, "\n");
}

// The values that a record says will be written, as far as they are known before.
std::vector<ParameterValue> wantedOf(Assignments values, const TuningSnapshot& menu,
                                     const std::optional<FanatecProduct>& product) {
  std::vector<ParameterValue> wanted;
  for (const Assignment& assignment : values) {
    const WantedValue value = wantedValue(assignment, menu, product);
    if (value.value && !value.error) wanted.push_back({assignment.parameter, *value.value});
  }
  return wanted;
}

// One run of the command.
class ValueWriter {
 public:
  ValueWriter(const CommandContext& context, const Interruption& interruption, WheelBase& base,
              const TuningSnapshot& menu)
      : context_(context),
        interruption_(interruption),
        base_(base),
        menu_(menu),
        writer_(base, menu, context.world.clock) {}

  // Adds a receipt for each value that was tried. A switch to another set is a record of its own:
  // the values after it belong to that set.
  void write(Assignments values, const HistoryIntent& intent) {
    const auto slot = std::find_if(values.begin(), values.end(), [](const Assignment& assignment) {
      return assignment.parameter == TuningParameter::slot;
    });
    const auto before = static_cast<std::size_t>(slot - values.begin());
    if (before > 0 || values.empty()) writeBatch(values.first(before), intent);
    if (slot == values.end()) return;
    writeBatch(values.subspan(before, 1),
               {HistoryAction::select, {}, std::to_string(slot->number), std::nullopt});
    if (before + 1 < values.size()) write(values.subspan(before + 1), intent);
  }

  const std::vector<Receipt>& receipts() const { return receipts_; }

 private:
  void writeBatch(Assignments values, HistoryIntent intent) {
    if (interruption_.requested()) return;
    intent.wanted = wantedOf(values, base_.tuning().value_or(menu_), base_.product());
    HistoryBatch batch = context_.world.history.begin(base_, intent);
    const bool isComplete = writeEach(values);
    batch.end(writer_.takeWritten(), isComplete ? std::nullopt : std::optional("Interrupted"));
    printIfNotRecorded(context_.world, batch);
  }

  // False when an interruption ended it.
  bool writeEach(Assignments values) {
    for (const Assignment& assignment : values) {
      if (interruption_.requested()) return false;
      receipts_.push_back(writer_.write(assignment));
      if (!context_.options.json) print(context_.world, receipts_.back());
    }
    return true;
  }

  const CommandContext& context_;
  const Interruption& interruption_;
  WheelBase& base_;
  const TuningSnapshot& menu_;
  AssignmentWriter writer_;
  std::vector<Receipt> receipts_;
};

}  // namespace

ExitStatus writeValues(const CommandContext& context, const Interruption& interruption,
                       WheelBase& base, const TuningSnapshot& menu, WriteRequest request) {
  const World& world = context.world;
  const std::vector<Assignment>& values = request.values;
  ValueWriter writer(context, interruption, base, menu);
  writer.write(values, request.intent);
  const std::vector<Receipt>& receipts = writer.receipts();
  if (context.options.json) {
    request.document["results"] = resultsJson(receipts);
    printJson(world, request.document);
  }

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
