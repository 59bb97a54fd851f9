#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tests/cli/command_line_fixture.h"

namespace quorvane {

// The schema of that name in docs/schemas/.
Json schemaNamed(std::string_view name);

// The names of all of them.
std::vector<std::string> schemaNames();

// What is wrong with a document, a line for each fault; empty when the schema holds. Knows the
// keywords that the schemas of this project use; another one throws std::runtime_error.
std::vector<std::string> schemaFaults(const Json& schema, const Json& document);

// Whether a run with these words prints one document: --json is among them, and they do not ask for
// help, or for a file or report on standard output.
bool printsDocument(const std::vector<std::string>& words);

// What is wrong with what a run printed under --json: it has to be one document that the schema of
// its command describes, or the error's.
std::vector<std::string> documentFaults(const std::vector<std::string>& words,
                                        const Outcome& outcome);

}  // namespace quorvane
