#pragma once

#include <string>
#include <vector>

#include "platform/survey.h"
#include "support/bytes.h"

namespace quorvane {

// Parses the kernel's format of an access list (the extended attribute system.posix_acl_access):
// the entries for named users and groups, with the mask applied. Empty for any other format.
std::vector<AccessEntry> parseAccessList(ByteView bytes);

// The entries of a file's access list; empty when it has none.
std::vector<AccessEntry> accessListOf(const std::string& path);

}  // namespace quorvane
