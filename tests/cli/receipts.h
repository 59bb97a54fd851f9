#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/cli/command_line_fixture.h"

// The JSON object that the writing commands print for each value.
namespace quorvane {

inline Json receipt(const char* parameter, const Json& value, const Json& readBack,
                    const Json& error, std::int64_t milliseconds) {
  return {{"parameter", parameter},
          {"value", value},
          {"readBack", readBack},
          {"error", error},
          {"milliseconds", milliseconds}};
}

// A receipt with a note: the parameter's coding rounds the value.
inline Json noted(Json receipt, const char* note) {
  receipt["note"] = note;
  return receipt;
}

inline std::string results(const std::vector<Json>& receipts) {
  return documentText(Json{{"results", receipts}}) + "\n";
}

}  // namespace quorvane
