#pragma once

#include <string>
#include <vector>

#include "hid/survey.h"
#include "support/bytes.h"

namespace quorvane {

// The entries for named users and groups in the kernel's form of an access list (the extended
// attribute system.posix_acl_access), its mask applied. None where the bytes are of another form.
std::vector<AccessEntry> parseAccessList(ByteView bytes);

// Those of a file; none when it has no such list.
std::vector<AccessEntry> accessListOf(const std::string& path);

}  // namespace quorvane
