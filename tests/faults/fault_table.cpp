#include "tests/faults/fault_table.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace quorvane::FaultTable {
namespace {

// Separates the lines within a field. Fields are separated by tabs.
constexpr const char* lineMark = "\x1f";

void addLine(const std::vector<std::string>& fields) {
  const char* const file = std::getenv("QUORVANE_FAULT_TABLE");
  if (file == nullptr) return;
  std::ofstream stream(file, std::ios::app);
  stream << fmt::format("{}\n", fmt::join(fields, "\t"));
  stream.flush();
  EXPECT_TRUE(stream.good()) << file;
}

}  // namespace

void add(const FaultCell& cell) {
  addLine({"cell", cell.table, cell.operation, cell.fault, fmt::format("{}", cell.n),
           fmt::format("{}", fmt::join(cell.lines, lineMark)),
           fmt::format("{:.3f}", cell.time.count()), cell.remains});
}

void addNotApplicable(const std::string& table, const std::string& operation,
                      const std::string& fault, const std::string& reason) {
  addLine({"not applicable", table, operation, fault, reason});
}

}  // namespace quorvane::FaultTable
