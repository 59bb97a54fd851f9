#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "tests/cli/command_line_fixture.h"

namespace quorvane {

// The schema with this name in docs/schemas/.
Json schemaNamed(std::string_view name);

// The names of all schemas.
std::vector<std::string> schemaNames();

// The violations of the schema, one line each; empty if the document is valid. Supports the
// keywords that this project's schemas use; any other one throws std::runtime_error.
std::vector<std::string> schemaFaults(const Json& schema, const Json& document);

// Whether a run with these words prints one JSON document: with --json, unless they ask for help or
// for a file or report on standard output.
bool printsDocument(const std::vector<std::string>& words);

// The violations in the output of a run with --json: it must be one document that is valid under
// its command's schema or the schema of errors.
std::vector<std::string> documentFaults(const std::vector<std::string>& words,
                                        const Outcome& outcome);

}  // namespace quorvane
