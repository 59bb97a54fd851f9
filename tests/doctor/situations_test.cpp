#include <gtest/gtest.h>

#include <functional>

#include "doctor/doctor.h"
#include "platform/system_survey.h"
#include "tests/cli/attached_nodes.h"
#include "tests/platform/system_tree.h"
#include "tests/support/ordinary_user.h"

namespace quorvane {
namespace {

constexpr int self = 100;

constexpr const char* turnAtWriting = "lock:\t1: OFDLCK ADVISORY  WRITE -1 00:05:333 0 0\n";

// A machine to put into faulty states, with its user's preset file.
class Machine {
 public:
  const SystemTree& tree() const { return tree_; }
  std::filesystem::path presets() const { return directory_ / "data/presets.json"; }

  // Adds the base to the backend. `accessible`: whether this user may open its node.
  FaultyDevice& addBase(bool accessible = true) {
    device_ = &nodes_.add(0x0020, "QV-4711", SystemTree::node, accessible);
    return *device_;
  }

  void writePresets(std::string_view content) const {
    std::filesystem::create_directories(presets().parent_path());
    putFile(presets(), content);
    for (const auto& path : {presets(), presets().parent_path()}) {
      std::filesystem::permissions(path, std::filesystem::perms::all);
    }
  }

  Diagnosis examine() {
    SystemSurvey survey(tree_.root(), self);
    Clock& clock = device_ != nullptr ? device_->clock() : Clock::system();
    const AsOrdinaryUser ordinary;
    return quorvane::examine({nodes_, USBBus::system(), clock, survey}, presets(), std::nullopt);
  }

 private:
  SystemTree tree_;
  TemporaryDirectory directory_;
  AttachedNodes nodes_;
  FaultyDevice* device_ = nullptr;
};

// One mark per check, in order: "+" passed, "x" failed, "." not checked.
std::string marksOf(const Diagnosis& diagnosis) {
  std::string marks;
  for (const DoctorCheck& check : diagnosis.checks) {
    marks += std::string("+x.").at(static_cast<std::size_t>(check.outcome));
  }
  return marks;
}

DoctorCheck firstFailed(const Diagnosis& diagnosis) {
  for (const DoctorCheck& check : diagnosis.checks) {
    if (check.outcome == CheckOutcome::failed) return check;
  }
  return {};
}

struct Situation {
  const char* name;
  std::function<void(Machine&)> make;
  std::string marks;
  std::string failed;  // the first check that fails
  std::string finding;
  std::string nextStep;  // the relevant part
};

void closedBase(Machine& machine) {
  machine.tree().addClosedBase();
  machine.tree().udevKnows(false);
  machine.addBase(false);
}

FaultyDevice& openBase(Machine& machine) {
  machine.tree().addOpenBase();
  return machine.addBase();
}

std::function<void(Machine&)> behaving(void (*change)(SimulatedBehaviour&)) {
  return [change](Machine& machine) {
    openBase(machine).withBase([change](SimulatedBase& base) { change(base.behaviour()); });
  };
}

// A base that only root may open, and rule files: pairs of path and content.
std::function<void(Machine&)> closedWith(std::vector<std::pair<std::string, std::string>> rules) {
  return [rules = std::move(rules)](Machine& machine) {
    closedBase(machine);
    for (const auto& [path, text] : rules) machine.tree().file(path, text);
  };
}

const std::string reload = "sudo udevadm control --reload && sudo udevadm trigger";
const std::string ourText = SystemTree::ruleText;
const std::string ruleOutside =
    "flatpak run --command=quorvanectl org.example.Quorvane udev-rule | sudo tee "
    "/etc/udev/rules.d/70-quorvane.rules && " +
    reload;

void sandbox(Machine& machine) {
  machine.tree().file("/.flatpak-info",
                      "[Application]\nname=org.example.Quorvane\nruntime=runtime/x\n");
}

const std::vector<Situation>& situations() {
  static const std::vector<Situation> all{
      {"all well", [](Machine& machine) { openBase(machine); }, "+++++++++", "", "", ""},

      {"nothing attached", [](Machine&) {}, "x.......+", "usb", "no Fanatec device",
       "Power the base on, set it to PC mode"},
      {"pedals alone", [](Machine& machine) { machine.tree().attach("6204"); }, "x.......+", "usb",
       "no wheel base, only: CSL Elite Pedals", "Power the base on"},
      {"in a mode for a console",
       [](Machine& machine) {
         machine.tree().attach("0aaa");
         machine.tree().addInterface("", "ff");
       },
       "+x......+", "driver", "the device has no HID interface",
       "Switch the base to PC mode with its mode button"},
      {"in a container without /sys",
       [](Machine& machine) {
         machine.tree().remove("/sys");
         machine.tree().file("/run/.containerenv", "");
       },
       "x.......+", "usb", "this system shows no USB bus", "This is a container"},

      {"not authorized",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().file("/sys/devices/usb3/3-1/authorized", "0");
       },
       "+x......+", "driver", "the system's policy keeps the device at 3-1 from being used",
       "echo 1 | sudo tee /sys/bus/usb/devices/3-1/authorized"},
      {"no driver",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface("");
       },
       "+x......+", "driver", "no driver serves its interface 3-1:1.0", "sudo modprobe usbhid"},
      {"another driver",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface("xpad");
       },
       "+x......+", "driver", "xpad serves its interface 3-1:1.0, not usbhid",
       "echo 3-1:1.0 | sudo tee /sys/bus/usb/drivers/xpad/unbind"},
      {"taken by a virtual machine",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface("usbfs");
       },
       "+x......+", "driver", "usbfs serves its interface 3-1:1.0, not usbhid",
       "A program or a virtual machine has taken the base"},
      {"a driver without a HID device",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface();
       },
       "+x......+", "driver", "usbhid serves its interface 3-1:1.0, but has made no HID device",
       "sudo dmesg"},
      {"no HID driver",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface();
         machine.tree().addHID("");
       },
       "+x......+", "driver", "no driver serves the HID device 0003:0EB7:0020.0001",
       "sudo modprobe hid-generic"},

      {"no hidraw node",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface();
         machine.tree().addHID();
       },
       "++x.....+", "node", "the kernel has made no hidraw node", "CONFIG_HIDRAW"},
      {"a node that is not in /dev",
       [](Machine& machine) {
         machine.tree().addOpenBase();
         machine.tree().remove(SystemTree::node);
       },
       "++x.....+", "node", "/dev/hidraw3 is missing", "plug it in again"},
      {"a node that is not in the container's /dev",
       [](Machine& machine) {
         machine.tree().addOpenBase();
         machine.tree().remove(SystemTree::node);
         machine.tree().file("/run/.containerenv", "");
       },
       "++x.....+", "node", "/dev/hidraw3 is missing", "--device /dev/hidraw3"},
      {"a node that udev has not announced", [](Machine& machine) { machine.tree().addOpenBase(); },
       "++x+...++", "node", "/dev/hidraw3 is there, but udev has not announced it",
       "sudo udevadm settle"},

      {"no rule", closedBase, "+++x+..++", "access", "no udev rule gives you /dev/hidraw3",
       "Install the rule: quorvanectl udev-rule | sudo tee /etc/udev/rules.d/70-quorvane.rules "
       "&& " +
           reload},
      {"a rule that is kept over updates and gone",
       closedWith({{"/etc/atomic-update.conf.d/quorvane.conf", "/etc/udev/rules.d/..."}}),
       "+++x+..++", "access",
       "the rule /etc/udev/rules.d/70-quorvane.rules is gone, as an update of the system can do",
       "Install it again: quorvanectl udev-rule --install"},
      {"a rule that is gone, and another that is there",
       closedWith({{"/etc/atomic-update.conf.d/quorvane.conf", ""},
                   {"/etc/udev/rules.d/90-base.rules", ourText}}),
       "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/90-base.rules, line 1 comes too late: access lists are made "
       "by 73-seat-late.rules",
       "Give it a number below 73"},
      {"a rule that runs only when the base is added",
       [](Machine& machine) {
         closedWith({{SystemTree::ourRule, "ACTION==\"add\", " + ourText}})(machine);
         machine.tree().udevKnows(true);
       },
       "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/70-quorvane.rules, line 1 runs only when the base is added "
       "(ACTION==\"add\"): since systemd 258 the access comes with change events",
       "Have it run on changes too, without ACTION==\"add\", then: " + reload},
      {"a file of rules that is left on changes",
       closedWith({{SystemTree::ourRule,
                    "ACTION!=\"add\", GOTO=\"end\"\n" + ourText + "LABEL=\"end\"\n"}}),
       "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/70-quorvane.rules, line 2 runs only when the base is added "
       "(ACTION==\"add\"): since systemd 258 the access comes with change events",
       "Have it run on changes too"},
      {"a rule that runs only when the base changes",
       closedWith({{SystemTree::ourRule, "ACTION==\"change\", " + ourText}}), "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/70-quorvane.rules, line 1 runs only when the base changes "
       "(ACTION==\"change\"), not when it is added",
       "Have it run on both, without ACTION==\"change\", then: " + reload},
      {"a rule that runs only when the base is added, behind one that always does",
       closedWith({{SystemTree::ourRule, ourText},
                   {"/etc/udev/rules.d/71-a.rules", "ACTION==\"add\", " + ourText}}),
       "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/70-quorvane.rules, line 1 was not there yet when the base "
       "was plugged in",
       "Unplug the base"},

      {"in a sandbox without the node",
       [](Machine& machine) {
         machine.tree().addOpenBase();
         machine.tree().remove(SystemTree::node);
         sandbox(machine);
       },
       "++x.....+", "node", "/dev/hidraw3 is kept from this sandbox",
       "Outside of it, type: flatpak override --user --device=all org.example.Quorvane"},
      {"in a sandbox that shows no rules",
       [](Machine& machine) {
         closedBase(machine);
         sandbox(machine);
         machine.tree().file(SystemTree::ourRule, ourText);  // the sandbox's own, without effect
       },
       "+++x+..++", "access",
       "/dev/hidraw3 is not yours to read and write, and this sandbox does not show the udev rules "
       "outside of it",
       "Use a terminal outside of the sandbox for this. Install the rule: " + ruleOutside},
      {"in a sandbox that shows all rules",
       [](Machine& machine) {
         closedBase(machine);
         sandbox(machine);
         machine.tree().directory("/run/host/etc/udev/rules.d");
         machine.tree().directory("/run/host/usr/lib/udev/rules.d");
       },
       "+++x+..++", "access", "no udev rule outside of this sandbox gives you /dev/hidraw3",
       "Use a terminal outside of the sandbox for this. Install the rule: " + ruleOutside},
      {"in a sandbox, with a rule outside",
       [](Machine& machine) {
         closedBase(machine);
         sandbox(machine);
         machine.tree().remove("/run/systemd");
         machine.tree().remove("/run/udev");
         machine.tree().file("/run/host/etc/udev/rules.d/70-quorvane.rules", ourText);
       },
       "+++x+..++", "access",
       "outside of this sandbox, /etc/udev/rules.d/70-quorvane.rules, line 1 gives /dev/hidraw3 to "
       "whoever sits at the machine, but you may not open it",
       "Use a terminal outside of the sandbox for this. Unplug the base and plug it in again, or: "
       "sudo udevadm trigger"},
      {"in a sandbox, with a rule outside that is gone",
       [](Machine& machine) {
         closedBase(machine);
         sandbox(machine);
         machine.tree().file("/run/host/etc/atomic-update.conf.d/quorvane.conf", "");
       },
       "+++x+..++", "access",
       "the rule /etc/udev/rules.d/70-quorvane.rules is gone, as an update of the system can do",
       "Install it again: " + ruleOutside},
      {"in a sandbox that refuses devices",
       [](Machine& machine) {
         openBase(machine).failOpenWith(HIDReturnCode::notPermitted);
         sandbox(machine);
       },
       "+++x+..++", "access", "the permissions of /dev/hidraw3 allow it, but opening it is refused",
       "Outside of the sandbox, type: flatpak override --user --device=all org.example.Quorvane"},
      {"in a sandbox, with a driver that is missing",
       [](Machine& machine) {
         machine.tree().attach();
         machine.tree().addInterface("");
         sandbox(machine);
       },
       "+x......+", "driver", "no driver serves its interface 3-1:1.0",
       "Use a terminal outside of the sandbox for this. Load the driver"},
      {"a rule for another device",
       closedWith({{"/etc/udev/rules.d/70-a.rules",
                    R"(KERNEL=="hidraw*", ATTRS{idVendor}=="0EB7", TAG+="uaccess")"}}),
       "+++x+..++", "access", "no udev rule gives you /dev/hidraw3", "Install the rule"},
      {"a rule that comes too late", closedWith({{"/etc/udev/rules.d/90-base.rules", ourText}}),
       "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/90-base.rules, line 1 comes too late: access lists are made "
       "by 73-seat-late.rules",
       "sudo mv /etc/udev/rules.d/90-base.rules /etc/udev/rules.d/70-base.rules && " + reload},
      {"a rule that came after the base", closedWith({{SystemTree::ourRule, ourText}}), "+++x+..++",
       "access",
       "the rule in /etc/udev/rules.d/70-quorvane.rules, line 1 was not there yet when the base "
       "was plugged in",
       "Unplug the base and plug it in again, or: sudo udevadm trigger"},
      {"a masked rule",
       closedWith(
           {{"/usr/lib/udev/rules.d/70-quorvane.rules", ourText}, {SystemTree::ourRule, ""}}),
       "+++x+..++", "access",
       "/etc/udev/rules.d/70-quorvane.rules hides the rule in "
       "/usr/lib/udev/rules.d/70-quorvane.rules",
       "sudo rm /etc/udev/rules.d/70-quorvane.rules && " + reload},
      {"a rule hidden by another file",
       closedWith({{"/usr/lib/udev/rules.d/70-quorvane.rules", ourText},
                   {SystemTree::ourRule, R"(KERNEL=="sda", MODE="0600")"}}),
       "+++x+..++", "access",
       "/etc/udev/rules.d/70-quorvane.rules hides the rule in "
       "/usr/lib/udev/rules.d/70-quorvane.rules",
       "sudo mv /etc/udev/rules.d/70-quorvane.rules /etc/udev/rules.d/69-local.rules"},
      {"a rule that forgets the tag",
       closedWith({{SystemTree::ourRule, ourText},
                   {"/etc/udev/rules.d/72-lock.rules", R"(KERNELS=="0003:0EB7:*", TAG="locked")"}}),
       "+++x+..++", "access",
       "two rules conflict: /etc/udev/rules.d/70-quorvane.rules, line 1 gives you /dev/hidraw3, "
       "/etc/udev/rules.d/72-lock.rules, line 1 takes it away",
       "Remove the second one (/etc/udev/rules.d/72-lock.rules), then: " + reload},
      {"a rule that closes what another opened",
       closedWith({{"/etc/udev/rules.d/60-a.rules", R"(KERNELS=="0003:0EB7:*", MODE="0666")"},
                   {"/etc/udev/rules.d/99-b.rules", R"(SUBSYSTEM=="hidraw", MODE="0600")"}}),
       "+++x+..++", "access",
       "two rules conflict: /etc/udev/rules.d/60-a.rules, line 1 gives you /dev/hidraw3, "
       "/etc/udev/rules.d/99-b.rules, line 1 takes it away",
       "Remove the second one"},
      {"a rule that opens what another closed",
       closedWith({{"/etc/udev/rules.d/60-a.rules", R"(SUBSYSTEM=="hidraw", MODE="0600")"},
                   {"/etc/udev/rules.d/99-b.rules", R"(KERNELS=="0003:0EB7:*", MODE="0666")"}}),
       "+++x+..++", "access",
       "the rule in /etc/udev/rules.d/99-b.rules, line 1 has not been applied to /dev/hidraw3",
       "sudo udevadm trigger"},
      {"a user who does not sit at the machine",
       [](Machine& machine) {
         closedWith({{SystemTree::ourRule, ourText}})(machine);
         machine.tree().udevKnows(true);
         machine.tree().seat(4242);
       },
       "+++x+..++", "access",
       "/etc/udev/rules.d/70-quorvane.rules, line 1 gives /dev/hidraw3 to whoever sits at the "
       "machine: not to you",
       "Log in at the machine itself"},
      {"nobody keeps seats",
       [](Machine& machine) {
         closedWith({{SystemTree::ourRule, ourText}})(machine);
         machine.tree().remove("/run/systemd");
       },
       "+++x+..++", "access",
       "/etc/udev/rules.d/70-quorvane.rules, line 1 gives /dev/hidraw3 to whoever sits at the "
       "machine, but nothing here keeps track of that",
       "GROUP="},
      {"everything right but the access list",
       [](Machine& machine) {
         closedWith({{SystemTree::ourRule, ourText}})(machine);
         machine.tree().udevKnows(true);
       },
       "+++x+..++", "access",
       "/etc/udev/rules.d/70-quorvane.rules, line 1 should have given you /dev/hidraw3, but it has "
       "not got the access list",
       "restart the computer"},
      {"no udev",
       [](Machine& machine) {
         closedBase(machine);
         machine.tree().remove("/run/udev");
       },
       "+++x+..++", "access",
       "/dev/hidraw3 is not yours to read and write, and no udev runs here to change that",
       "sudo setfacl -m u:$USER:rw /dev/hidraw3"},
      {"opening refused in spite of the permissions",
       [](Machine& machine) { openBase(machine).failOpenWith(HIDReturnCode::notPermitted); },
       "+++x+..++", "access", "the permissions of /dev/hidraw3 allow it, but opening it is refused",
       "sandbox"},

      {"a descriptor without the reports",
       [](Machine& machine) {
         openBase(machine).setProperty(
             HIDPropertyKey::reportDescriptor,
             Bytes{0x05, 0x01, 0x09, 0x04, 0xA1, 0x01, 0x75, 0x08, 0x95, 0x08, 0x81, 0x02, 0xC0});
       },
       "++++x++++", "reports",
       "the base does not offer: 64-byte input report 0xff, 64-byte output report 0xff, output "
       "report for short commands",
       "Set the base to PC mode"},
      {"no answer at all", behaving([](SimulatedBehaviour& base) { base.silent = true; }),
       "+++++xx++", "identity", "Timed out waiting for system report (FF 08)",
       "If it stays silent, update its firmware."},
      {"no menu", behaving([](SimulatedBehaviour& base) { base.tuningSilent = true; }), "++++++x++",
       "tuning",
       "Timed out waiting for tuning menu report (is the base in PC mode and on a supported "
       "firmware?)",
       "update the base's firmware"},
      {"sends that fail",
       behaving([](SimulatedBehaviour& base) { base.failSendsWith = HIDReturnCode::generalError; }),
       "+++++xx++", "identity", "HID I/O failed: SetReport id 0xFF -> IOReturn 0xE00002BC",
       "Set the base to PC mode"},
      {"a base that leaves in the middle",
       behaving([](SimulatedBehaviour& base) { base.unplugAfter = 1; }), "+++++xx++", "identity",
       "HID I/O failed: SetReport id 0xFF -> device not found", "Set the base to PC mode"},
      {"opening fails",
       [](Machine& machine) { openBase(machine).failOpenWith(HIDReturnCode::generalError); },
       "+++++x.++", "identity", "the base could not be opened: HID I/O failed: IOReturn 0xE00002BC",
       "Unplug the base"},

      {"another program keeps it to itself",
       [](Machine& machine) {
         openBase(machine).failOpenWith(HIDReturnCode::exclusiveAccess);
         machine.tree().addProcess(200, "game", SystemTree::node);
         machine.tree().file("/proc/locks", machine.tree().lockLine(200, "WRITE"));
       },
       "+++++..x+", "holders", "game (process 200) keeps /dev/hidraw3 to itself",
       "Close that program: game (process 200)"},
      {"a hidden program keeps it to itself",
       [](Machine& machine) { openBase(machine).failOpenWith(HIDReturnCode::exclusiveAccess); },
       "+++++..x+", "holders", "a program that you may not look into keeps /dev/hidraw3 to itself",
       "sudo fuser -v /dev/hidraw3"},
      {"another program and no answer",
       [](Machine& machine) {
         behaving([](SimulatedBehaviour& base) { base.silent = true; })(machine);
         machine.tree().addProcess(200, "game", SystemTree::node);
       },
       "+++++xxx+", "identity", "Timed out waiting for system report (FF 08)", ""},
      {"a program that is stopped while it is writing",
       [](Machine& machine) {
         openBase(machine);
         machine.tree().addProcess(200, "game", SystemTree::node);
         machine.tree().file("/proc/200/fdinfo/7", turnAtWriting);
         machine.tree().file("/proc/200/stat", "200 (game) T 1 200");
       },
       "+++++++x+", "holders",
       "game (process 200) is stopped while it is writing to the base, and keeps others from "
       "writing",
       "Continue it, or end it: kill -CONT 200"},
      {"a program that is just writing",
       [](Machine& machine) {
         openBase(machine);
         machine.tree().addProcess(200, "game", SystemTree::node);
         machine.tree().file("/proc/200/fdinfo/7", turnAtWriting);
         machine.tree().file("/proc/200/stat", "200 (game) S 1 200");
       },
       "+++++++++", "", "", ""},
      {"another program that does no harm",
       [](Machine& machine) {
         openBase(machine);
         machine.tree().addProcess(200, "game", SystemTree::node);
       },
       "+++++++++", "", "", ""},

      {"a preset file that is damaged",
       [](Machine& machine) {
         openBase(machine);
         machine.writePresets(R"([{"name")");
       },
       "++++++++x", "presets", "", "a new file is begun then"},
      {"a preset file that may not be read",
       [](Machine& machine) {
         openBase(machine);
         machine.writePresets("[]");
         EXPECT_EQ(::chmod(machine.presets().c_str(), 0), 0);
       },
       "++++++++x", "presets", "", "sudo chown $USER"},
      {"a preset file that is a directory",
       [](Machine& machine) {
         openBase(machine);
         std::filesystem::create_directories(machine.presets());
       },
       "++++++++x", "presets", "", "Make it a file"},
      {"a home that may not be written",
       [](Machine& machine) {
         openBase(machine);
         std::filesystem::create_directories(machine.presets().parent_path());
         EXPECT_EQ(::chmod(machine.presets().parent_path().c_str(), 0555), 0);
       },
       "++++++++x", "presets", "", "XDG_DATA_HOME"},
  };
  return all;
}

TEST(Situations, EachIsFoundWithItsNextStep) {
  for (const Situation& situation : situations()) {
    SCOPED_TRACE(situation.name);
    Machine machine;
    situation.make(machine);
    const Diagnosis diagnosis = machine.examine();
    EXPECT_EQ(marksOf(diagnosis), situation.marks);
    EXPECT_EQ(diagnosis.passed(), situation.failed.empty());
    const DoctorCheck failed = firstFailed(diagnosis);
    EXPECT_EQ(failed.id, situation.failed);
    if (!situation.finding.empty()) {
      EXPECT_EQ(failed.finding, situation.finding);
    }
    EXPECT_NE(failed.nextStep.find(situation.nextStep), std::string::npos) << failed.nextStep;
  }
}

TEST(Situations, OnlyWhatFailedHasANextStepAndEveryTextIsOneLine) {
  for (const Situation& situation : situations()) {
    SCOPED_TRACE(situation.name);
    Machine machine;
    situation.make(machine);
    for (const DoctorCheck& check : machine.examine().checks) {
      EXPECT_EQ(check.nextStep.empty(), check.outcome != CheckOutcome::failed) << check.id;
      EXPECT_FALSE(check.finding.empty()) << check.id;
      EXPECT_EQ((check.finding + check.nextStep).find('\n'), std::string::npos) << check.id;
      EXPECT_EQ((check.finding + check.nextStep).find("QV-4711"), std::string::npos) << check.id;
    }
  }
}

TEST(Situations, ACommandIsPartOfTheNextStepAndNoSudoIsElsewhere) {
  int commands = 0;
  for (const Situation& situation : situations()) {
    SCOPED_TRACE(situation.name);
    Machine machine;
    situation.make(machine);
    for (const DoctorCheck& check : machine.examine().checks) {
      std::string rest = check.nextStep;
      if (!check.command.empty()) {
        ++commands;
        const std::size_t place = rest.find(": " + check.command);
        ASSERT_NE(place, std::string::npos) << check.command;
        rest.erase(place, check.command.size() + 2);
      }
      EXPECT_EQ(rest.find("sudo "), std::string::npos) << check.id;
    }
  }
  EXPECT_GT(commands, 15);
}

std::string findingOf(const Diagnosis& diagnosis, std::string_view id) {
  for (const DoctorCheck& check : diagnosis.checks) {
    if (check.id == id) return check.finding;
  }
  return {};
}

TEST(Situations, WhatIsWellIsToldToo) {
  Machine machine;
  openBase(machine);
  machine.tree().addProcess(200, "game", SystemTree::node);
  machine.tree().addProcess(201, "", SystemTree::node);
  machine.writePresets("[]");
  const Diagnosis diagnosis = machine.examine();
  const std::vector<std::pair<std::string, std::string>> wanted{
      {"usb", "CSL DD / GT DD Pro / ClubSport DD at 3-1"},
      {"driver", "usbhid, hid-generic"},
      {"node", "/dev/hidraw3"},
      {"reports", "the 64-byte reports, and short commands on report 0x01"},
      {"identity",
       "CSL DD Wheel Base, ClubSport Steering Wheel Formula V3, Podium Button Module Endurance"},
      {"tuning", "standard menu, set C (Custom)"},
      {"holders", "also open in game (process 200), process 201, which does no harm"},
      {"presets", "0 presets in " + machine.presets().string()},
  };
  for (const auto& [id, finding] : wanted) EXPECT_EQ(findingOf(diagnosis, id), finding);
}

TEST(Situations, NothingIsChanged) {
  Machine machine;
  FaultyDevice& device = openBase(machine);
  machine.writePresets(R"([{"name")");
  machine.examine();
  EXPECT_EQ(contentOf(machine.presets()), R"([{"name")");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(machine.presets().parent_path()), {}),
            1);
  EXPECT_EQ(device.transcript().lines(),
            (std::vector<std::string>{"open", "> ff 08 01 ff +60", "> ff 08 02 +61",
                                      "> ff 03 02 +61", "close"}));
  EXPECT_EQ(device.violations(), std::vector<std::string>{});
}

}  // namespace
}  // namespace quorvane
