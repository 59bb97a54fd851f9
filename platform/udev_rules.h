#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/survey.h"

namespace quorvane {

// Evaluates udev's rules for the permissions of one node. Pure functions.

// One rules file.
struct UdevRuleFile {
  std::string path;
  std::string text;
};

// The attributes of a hidraw node that conditions of rules match.
struct RuleSubject {
  std::string node;                     // "hidraw3"
  std::vector<std::string> names;       // of the node and its parent devices
  std::vector<std::string> subsystems;  // of the node and its parent devices
  std::string vendorID;                 // four lower-case digits; empty when it is not on USB
  std::string productID;
};

// The rules with a condition that names the vendor.
std::vector<UdevRule> vendorRules(const std::vector<UdevRuleFile>& files);

// The rules that set the node's permissions, in the order in which they run. `files` must be in
// that order. Conditions that only a running udev can evaluate count as true in rules that name the
// vendor, else as false.
std::vector<UdevRuleFacts> rulesFor(const RuleSubject& subject,
                                    const std::vector<UdevRuleFile>& files);

}  // namespace quorvane
