#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/node_holder.h"
#include "support/bytes.h"

namespace quorvane {

// Facts about a vendor's devices on this machine (USB, HID, node) and about who may open them, to
// find out why a base is not found. Facts only; the doctor draws the conclusions.

struct USBInterfaceFacts {
  std::string name;    // "3-1:1.0"
  bool isHID = false;  // by its class
  std::string driver;  // the driver it is bound to; empty: none
};

struct USBDeviceFacts {
  std::string name;  // "3-1.4": bus and ports
  std::int64_t productID = 0;
  std::string product;
  std::string serialNumber;
  bool isAuthorized = true;  // false: the kernel does not use it (sysfs `authorized`)
  std::vector<USBInterfaceFacts> interfaces;
};

struct UdevRule {
  std::string file;
  int line = 0;  // counted from 1
  std::string text;
};

// The effect of a rule on a node's permissions. udev runs its rules when a device is added, and
// again on each change event, such as a trigger or a new user at the seat. From systemd 258 on, a
// tag counts only if the last run set it.
struct UdevRuleFacts {
  UdevRule rule;
  bool tagsForSeat = false;    // sets the tag that grants access to the user at the seat
  bool untagsForSeat = false;  // clears that tag
  bool isInTime = true;        // runs before udev turns the tag into access lists
  bool runsOnAdd = true;
  bool runsOnChange = true;
  std::optional<std::uint32_t> mode;
  std::string group;
};

// A rules file for a node that udev does not read, because a file of the same name overrides it.
struct HiddenRules {
  std::string file;
  std::string hiddenBy;
  bool isMask = false;  // the other file is empty or a link to /dev/null
};

// An entry of a node's access list for a named user or group.
struct AccessEntry {
  bool isGroup = false;
  std::uint32_t id = 0;
  bool mayRead = false;  // both with the list's mask applied
  bool mayWrite = false;
};

struct NodeFacts {
  std::string path;  // "/dev/hidraw3"
  bool exists = false;
  std::uint32_t mode = 0;  // permission bits
  std::uint32_t owner = 0;
  std::uint32_t group = 0;
  std::string groupName;  // empty: the group has no name
  std::vector<AccessEntry> accessList;
  bool mayRead = false;  // effective permissions of this user
  bool mayWrite = false;
  std::optional<bool> isTaggedForSeat;  // none: udev has not processed it
  std::vector<UdevRuleFacts> rules;     // in the order in which they run
  std::vector<HiddenRules> hiddenRules;
  std::vector<NodeHolder> holders;
  bool areAllHoldersKnown = true;  // false: some processes could not be inspected
};

struct HIDFacts {
  std::string name;  // "0003:0EB7:0020.0001"
  std::int64_t productID = 0;
  std::string product;  // as the device names itself
  std::string serialNumber;
  std::string usbInterface;  // its USB interface; empty: not on USB
  std::string driver;        // empty: none
  Bytes descriptor;
  std::optional<NodeFacts> node;  // none: the kernel created none
};

// The Flatpak sandbox that this program runs in.
struct SandboxFacts {
  std::string application;      // its ID
  bool showsHostRules = false;  // all udev rules of the host are visible
};

// The user who runs the program.
struct UserFacts {
  std::uint32_t id = 0;
  std::vector<std::uint32_t> groups;
  std::string name;
  std::string home;
};

struct MachineFacts {
  bool isSimulated = false;  // only simulated devices
  bool hasUSB = false;       // a USB bus is visible
  bool hasUdev = false;
  bool isContainer = false;
  std::optional<SandboxFacts> sandbox;
  bool isRuleLost = false;  // this program's udev rule is missing (see isOwnRuleLost)
  std::optional<std::vector<std::uint32_t>> seatedUsers;  // none: no seat management
  UserFacts user;
  std::string kernel;
  std::string distribution;
  std::string sessionType;  // "wayland", "x11", "tty"; empty: none
  std::string desktop;
  std::vector<USBDeviceFacts> usb;
  std::vector<HIDFacts> hid;
  std::vector<UdevRule> vendorRules;  // all rules that name the vendor
};

// Collects the facts about a machine. Thread-safe.
class HIDSurvey {
 public:
  virtual ~HIDSurvey() = default;

  // The facts about the devices of a vendor. Blocks for a fraction of a second. Opens no device and
  // changes nothing. Skips what cannot be read.
  virtual MachineFacts take(std::int64_t vendorID) = 0;

  // This machine's facts.
  static HIDSurvey& system();
};

}  // namespace quorvane
