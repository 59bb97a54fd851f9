#include "platform/udev_rules.h"

#include <gtest/gtest.h>

namespace quorvane::udev_rules_test {
namespace {

RuleSubject onUSB() {
  return {"hidraw3",
          {"hidraw3", "0003:0EB7:0020.0001", "3-1:1.0", "3-1"},
          {"hidraw", "hid", "usb"},
          "0eb7",
          "0020"};
}

RuleSubject virtualDevice() {
  return {"hidraw3", {"hidraw3", "0003:0EB7:0020.0001"}, {"hidraw", "hid"}, "", ""};
}

// The rules' effects in short: "+" and "-" for the tag, "late" for a tag that has no effect, modes
// and groups.
std::string effects(const std::vector<UdevRuleFacts>& rules) {
  std::string text;
  for (const UdevRuleFacts& rule : rules) {
    text += text.empty() ? "" : " ";
    text += std::to_string(rule.rule.line) + ":";
    if (rule.tagsForSeat) text += rule.isInTime ? "+" : "late";
    if (rule.untagsForSeat) text += "-";
    if (rule.mode) text += std::to_string(*rule.mode);
    text += rule.group;
    if (!rule.runsOnChange) text += "(add)";
    if (!rule.runsOnAdd) text += "(change)";
  }
  return text;
}

std::string effects(const std::string& text, const RuleSubject& subject = onUSB(),
                    const std::string& name = "70-a.rules") {
  return effects(rulesFor(subject, {{"/etc/udev/rules.d/" + name, text}}));
}

TEST(UdevRules, AreThoseThatSetThePermissionsOfTheNode) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", ""},
      {R"(# SUBSYSTEM=="hidraw", TAG+="uaccess")", ""},
      {R"(SUBSYSTEM=="hidraw", KERNELS=="0003:0EB7:*", TAG+="uaccess")", "1:+"},
      {R"(KERNEL=="hidraw*", ATTRS{idVendor}=="0eb7", TAG+="uaccess")", "1:+"},
      {R"(KERNEL=="hidraw*" ATTRS{idVendor}=="0eb7" , TAG += "uaccess",)", "1:+"},
      {R"(KERNEL=="hidraw*", ATTRS{idVendor}=="0eb7", ATTRS{idProduct}=="0020|0006", )"
       R"(MODE="0660", GROUP="plugdev")",
       "1:432plugdev"},
      {"\n\nSUBSYSTEM==\"hidraw\", \\\n  # a comment in between\n  MODE:=\"0666\"\n", "3:438"},
      {R"(SUBSYSTEM=="hidraw", TAG-="uaccess")", ""},
      {R"(SUBSYSTEM=="hidraw", TAG="other")", "1:-"},
      {R"(SUBSYSTEM=="hidraw", TAG+="other")", ""},
      {R"(SUBSYSTEM=="hidraw", MODE="")", ""},
      {R"(SUBSYSTEM=="hidraw", MODE="rw")", ""},
      {R"(SUBSYSTEM=="hidraw", SYMLINK+="wheel")", ""},

      // Another device.
      {R"(SUBSYSTEM=="usb", ATTRS{idVendor}=="0eb7", TAG+="uaccess")", ""},
      {R"(KERNEL=="hidraw1", TAG+="uaccess")", ""},
      {R"(KERNEL=="hidraw*", ATTRS{idVendor}=="28de", TAG+="uaccess")", ""},
      {R"(KERNEL=="hidraw*", ATTRS{idVendor}=="0EB7", TAG+="uaccess")", ""},
      {R"(KERNEL=="hidraw*", ATTR{idVendor}=="0eb7", TAG+="uaccess")", ""},
      {R"(KERNEL=="hidraw*", ATTRS{idVendor}!="0eb7", TAG+="uaccess")", ""},
      {R"(ACTION=="remove", SUBSYSTEM=="hidraw", TAG+="uaccess")", ""},

      // Rules for some events only.
      {R"(ACTION=="add", SUBSYSTEM=="hidraw", TAG+="uaccess")", "1:+(add)"},
      {R"(ACTION=="change", SUBSYSTEM=="hidraw", TAG+="uaccess")", "1:+(change)"},
      {R"(ACTION=="add|change", SUBSYSTEM=="hidraw", TAG+="uaccess")", "1:+"},
      {R"(ACTION!="remove", SUBSYSTEM=="hidraw", TAG+="uaccess")", "1:+"},
      {R"(ACTION=="bind", SUBSYSTEM=="hidraw", TAG+="uaccess")", ""},
      {"ACTION!=\"add\", GOTO=\"end\"\nMODE=\"0660\"\nLABEL=\"end\"\nTAG+=\"uaccess\"",
       "2:432(add) 4:+"},
      {"ACTION==\"add\", GOTO=\"end\"\nMODE=\"0660\"\nLABEL=\"end\", GROUP=\"wheel\"",
       "2:432(change) 3:wheel"},

      // Conditions that only udev can evaluate count as met in rules that name the vendor.
      {R"(SUBSYSTEM=="hidraw", ENV{ID_HARDWARE_WALLET}=="1", TAG+="uaccess")", ""},
      {R"(KERNELS=="0003:0EB7:*", ENV{ANY}=="1", TAG+="uaccess")", "1:+"},
      {R"(SUBSYSTEM=="hidraw", PROGRAM="/bin/test", TAG+="uaccess")", ""},

      // Jumps.
      {"ATTRS{idVendor}!=\"28de\", GOTO=\"end\"\nSUBSYSTEM==\"hidraw\", MODE=\"0666\"\n"
       "LABEL=\"end\"\nSUBSYSTEM==\"hidraw\", TAG+=\"uaccess\"",
       "4:+"},
      {"ATTRS{idVendor}!=\"0eb7\", GOTO=\"end\"\nSUBSYSTEM==\"hidraw\", TAG+=\"uaccess\"\n"
       R"(LABEL="end")",
       "2:+"},
      {"GOTO=\"nowhere\"\nSUBSYSTEM==\"hidraw\", TAG+=\"uaccess\"", ""},

      // Lines that are not valid rules.
      {R"(SUBSYSTEM=="hidraw", TAG+="uaccess)", ""},
      {R"(SUBSYSTEM=="hidraw", TAG+=uaccess)", ""},
      {R"(SUBSYSTEM=hidraw", TAG+="uaccess")", ""},
      {R"({}=="", TAG+="uaccess")", ""},
      {R"(SUBSYSTEM=="hidraw", TAG+="uaccess" \)", "1:+"},
      {std::string("\0\xff\\\n\"\"==", 8), ""},
  };
  for (const auto& [text, wanted] : cases) EXPECT_EQ(effects(text), wanted) << text;
}

TEST(UdevRules, ConditionsOnUSBNeverHoldForAVirtualDevice) {
  EXPECT_EQ(
      effects(R"(KERNEL=="hidraw*", ATTRS{idVendor}=="0eb7", TAG+="uaccess")", virtualDevice()),
      "");
  EXPECT_EQ(
      effects(R"(SUBSYSTEMS=="usb", KERNELS=="0003:0EB7:*", TAG+="uaccess")", virtualDevice()), "");
  EXPECT_EQ(effects(R"(KERNELS=="0003:0EB7:*", TAG+="uaccess")", virtualDevice()), "1:+");
}

TEST(UdevRules, TagInTimeBeforeTheAccessListsAreMade) {
  const std::string rule = R"(SUBSYSTEM=="hidraw", TAG+="uaccess")";
  EXPECT_EQ(effects(rule, onUSB(), "70-quorvane.rules"), "1:+");
  EXPECT_EQ(effects(rule, onUSB(), "73-a.rules"), "1:+");
  EXPECT_EQ(effects(rule, onUSB(), "73-seat-late.rules"), "1:late");
  EXPECT_EQ(effects(rule, onUSB(), "90-quorvane.rules"), "1:late");
  EXPECT_EQ(effects(rule, onUSB(), "quorvane.rules"), "1:late");
}

TEST(UdevRules, KeepTheOrderOfTheirFiles) {
  const auto rules = rulesFor(
      onUSB(), {{"/a/60-a.rules", R"(MODE="0666")"}, {"/b/70-b.rules", "\nMODE=\"0600\""}});
  ASSERT_EQ(rules.size(), 2U);
  EXPECT_EQ(rules[0].rule.file, "/a/60-a.rules");
  EXPECT_EQ(rules[1].rule.file, "/b/70-b.rules");
  EXPECT_EQ(rules[1].rule.text, R"(MODE="0600")");
  EXPECT_EQ(effects(rules), "1:438 2:384");
}

TEST(UdevRules, NameTheVendorInAConditionOfWhateverKind) {
  const auto rules = vendorRules({{"/a.rules",
                                   "KERNEL==\"hidraw*\", MODE=\"0660\"\n"
                                   "ATTRS{idVendor}==\"0EB7\", MODE=\"0660\"\n"
                                   "# 0eb7\n"
                                   "SUBSYSTEM==\"usb\", ATTR{idVendor}==\"0eb7\"\n"
                                   "SUBSYSTEM==\"usb\", SYMLINK+=\"0eb7\"\n"}});
  ASSERT_EQ(rules.size(), 2U);
  EXPECT_EQ(rules[0].line, 2);
  EXPECT_EQ(rules[1].line, 4);
}

}  // namespace
}  // namespace quorvane::udev_rules_test
