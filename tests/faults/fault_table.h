#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "support/clock.h"

namespace quorvane {

// One meeting of an operation with a fault, as docs/faults.md shows it.
struct FaultCell {
  std::string table;
  std::string operation;
  std::string fault;               // "#" stands for n
  std::size_t n = 0;               // from 1; 0 where nothing is counted
  std::vector<std::string> lines;  // what a person reads
  Seconds time{0};
  std::string remains;  // what is staged, or what the files hold
};

// Lists cells for scripts/fault-table, in the file that QUORVANE_FAULT_TABLE names; without one,
// does nothing.
namespace FaultTable {

void add(const FaultCell& cell);
void addNotApplicable(const std::string& table, const std::string& operation,
                      const std::string& fault, const std::string& reason);

}  // namespace FaultTable
}  // namespace quorvane
