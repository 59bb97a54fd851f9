#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "platform/device_facts.h"
#include "platform/udev_rules.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

using RuleFiles = std::vector<UdevRuleFile>;

constexpr const char* rulesPath = "/etc/udev/rules.d/50-fuzz.rules";

const RuleSubject& baseNode() {
  static const RuleSubject node{"hidraw3",
                                {"hidraw3", "0003:0EB7:0020.0001", "3-1:1.0", "3-1"},
                                {"hidraw", "hid", "usb"},
                                "0eb7",
                                "0020"};
  return node;
}

bool isOneLine(const std::string& text) { return text.find('\n') == std::string::npos; }

void expectUevent(const std::string& text) {
  const HIDUevent uevent = parseHIDUevent(text);
  constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
  for (const std::int64_t number : {uevent.bus, uevent.vendorID, uevent.productID}) {
    invariant(number >= 0 && number <= most, "an ID has 32 bits");
  }
  invariant(isOneLine(uevent.name) && isOneLine(uevent.uniq), "a device's texts are one line");
  invariant(parseHIDUevent(text + "\nHID_PHYS=usb-1\n") == uevent, "other lines say nothing");
  // A line that a device adds through its name comes last: it must not override the ID.
  const HIDUevent later = parseHIDUevent(text + "\nHID_ID=0003:00000EB7:00000020\n");
  const bool hasID = text.starts_with("HID_ID=") || text.find("\nHID_ID=") != std::string::npos;
  invariant(hasID ? later == uevent : later.productID == 0x0020, "the first ID counts");
  invariant(later.name == uevent.name && later.uniq == uevent.uniq, "an ID is no name");
}

void expectFacts(const std::string& text) {
  const HIDUevent uevent = parseHIDUevent(text);
  const std::string transport = transportName(uevent.bus);
  invariant(transport.empty() || uevent.bus != 0, "no bus has no name");
  const std::int64_t location = usbLocationID(uevent.bus, text);
  invariant(location >= 0 && location <= std::numeric_limits<std::uint32_t>::max(),
            "a location has 32 bits");
  invariant(location >> 24 == (uevent.bus & 0xFF), "a location has its bus on top");
  const auto vendor = vendorInPath(text);
  invariant(vendorInPath("/sys/0003:0EB7:0020.0001/" + text).value_or(0) == vendor.value_or(0x0EB7),
            "the nearest device of a path counts");
}

bool haveSameEffect(const UdevRuleFacts& a, const UdevRuleFacts& b) {
  return a.tagsForSeat == b.tagsForSeat && a.untagsForSeat == b.untagsForSeat &&
         a.isInTime == b.isInTime && a.mode == b.mode && a.group == b.group;
}

void expectPlace(const UdevRule& rule, const std::string& text) {
  invariant(rule.file == rulesPath, "a rule tells its file");
  invariant(rule.line >= 1 && rule.line <= std::count(text.begin(), text.end(), '\n') + 1,
            "a rule tells its line");
  invariant(!rule.text.empty() && isOneLine(rule.text), "a rule tells its text on one line");
}

// With a comment line in front, the rules are the same, one line further down.
void expectMoved(const std::string& text, const std::vector<UdevRuleFacts>& facts) {
  const auto moved = rulesFor(baseNode(), {{rulesPath, "# A comment\n" + text}});
  const auto isMoved = [](const UdevRuleFacts& before, const UdevRuleFacts& after) {
    return haveSameEffect(before, after) && after.rule.text == before.rule.text &&
           after.rule.line == before.rule.line + 1;
  };
  invariant(std::equal(facts.begin(), facts.end(), moved.begin(), moved.end(), isMoved),
            "a comment changes nothing");
}

void expectRules(const std::string& text) {
  const RuleFiles once{{rulesPath, text}};
  const auto facts = rulesFor(baseNode(), once);
  int last = 0;
  for (const UdevRuleFacts& each : facts) {
    expectPlace(each.rule, text);
    invariant(each.rule.line > last, "rules run in the order of their lines");
    last = each.rule.line;
    // Rules with a GOTO depend on the others.
    if (text.find("GOTO") != std::string::npos) continue;
    const auto alone = rulesFor(baseNode(), {{rulesPath, each.rule.text}});
    invariant(alone.size() == 1 && haveSameEffect(alone.front(), each),
              "a rule does the same alone");
  }
  expectMoved(text, facts);
  for (const UdevRule& rule : vendorRules(once)) expectPlace(rule, text);
  const RuleFiles twice{once.front(), once.front()};
  invariant(rulesFor(baseNode(), twice).size() == 2 * facts.size() &&
                vendorRules(twice).size() == 2 * vendorRules(once).size(),
            "files do not disturb each other");
}

}  // namespace

void uevent(ByteView bytes) {
  Input input(bytes);
  const std::string text = textOf(input.until(0));
  expectUevent(text);
  expectFacts(text);
  expectRules(textOf(input.rest()));
}

}  // namespace quorvane::Fuzz
