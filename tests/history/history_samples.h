#pragma once

#include <string>
#include <vector>

#include "history/history_record.h"
#include "simulator/simulated_base.h"
#include "simulator/simulated_menu.h"

namespace quorvane {

// The menu of a new simulated base.
inline TuningSnapshot sampleMenu() {
  const auto product = FanatecProduct::lookup(defaultSimulatedProduct).value();
  SimulatedBase base(product);
  return TuningSnapshot::fromReport(base.menu().report(), WallSeconds(std::chrono::seconds(0)))
      .value();
}

// A `set` of the force feedback that succeeded.
inline HistoryRecord sampleRecord(std::int64_t was, std::int64_t wanted) {
  HistoryRecord record;
  record.id = UUID::random();
  record.program = "quorvanectl";
  record.base = "CSL DD";
  record.productID = defaultSimulatedProduct;
  record.menu = sampleMenu();
  record.wanted = {{TuningParameter::forceFeedback, wanted}};
  record.outcome =
      HistoryOutcome{{{TuningParameter::forceFeedback, was, wanted, wanted, 250, std::nullopt}},
                     std::nullopt,
                     sampleMenu()};
  return record;
}

// An undo or a redo of a record that succeeded.
inline HistoryRecord sampleReversal(HistoryAction action, const HistoryRecord& of) {
  HistoryRecord record = sampleRecord(0, 0);
  record.action = action;
  record.reverses = of.id;
  record.wanted.clear();
  record.outcome->values.clear();
  return record;
}

}  // namespace quorvane
