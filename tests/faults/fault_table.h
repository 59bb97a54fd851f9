#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "support/clock.h"

namespace quorvane {

// One operation with one fault: a cell of the tables in docs/fault-table.md.
struct FaultCell {
  std::string table;
  std::string operation;
  std::string fault;               // "#" stands for n
  std::size_t n = 0;               // from 1; 0 where nothing is counted
  std::vector<std::string> lines;  // what the user sees
  Seconds time{0};
  std::string remains;  // what is staged, or what the files hold
};

// Appends cells, for scripts/fault-table, to the file that the environment variable
// QUORVANE_FAULT_TABLE names. Does nothing if it is not set.
namespace FaultTable {

void add(const FaultCell& cell);
void addNotApplicable(const std::string& table, const std::string& operation,
                      const std::string& fault, const std::string& reason);

}  // namespace FaultTable
}  // namespace quorvane
