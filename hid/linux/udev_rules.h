#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hid/survey.h"

namespace quorvane {

// What udev's rules mean for the permissions of one node. Pure functions.

// One file of rules: its path and what it holds.
struct UdevRuleFile {
  std::string path;
  std::string text;
};

// A hidraw node as rules see it: what their conditions ask about.
struct RuleSubject {
  std::string node;                     // "hidraw3"
  std::vector<std::string> names;       // its own and those of the devices above it
  std::vector<std::string> subsystems;  // likewise
  std::string vendorID;                 // four lower-case digits; empty when it is not on USB
  std::string productID;
};

// The rules with a condition that names the vendor.
std::vector<UdevRule> vendorRules(const std::vector<UdevRuleFile>& files);

// The rules that set the node's permissions, in the order in which they run; the files come in
// that order. Conditions on what only a running udev knows count as true in rules that name the
// vendor, and as false elsewhere.
std::vector<UdevRuleFacts> rulesFor(const RuleSubject& subject,
                                    const std::vector<UdevRuleFile>& files);

}  // namespace quorvane
