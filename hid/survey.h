#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hid/node_holder.h"
#include "support/bytes.h"

namespace quorvane {

// How far a vendor's devices have come on this machine, and who may open them: what is there to
// tell why a base is not found. Facts only; nothing here judges them.

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
  bool isAuthorized = true;  // else the machine refuses to use it
  std::vector<USBInterfaceFacts> interfaces;
};

struct UdevRule {
  std::string file;
  int line = 0;  // counted from 1
  std::string text;
};

// A rule that concerns a node, by what it does to the node's permissions. udev runs its rules when
// a device is added and again whenever it changes: a trigger is a change, and so is another user
// taking the seat. From systemd 258 on a tag that is not set again then no longer counts.
struct UdevRuleFacts {
  UdevRule rule;
  bool tagsForSeat = false;    // gives it to whoever sits at the machine
  bool untagsForSeat = false;  // takes that back
  bool isInTime = true;        // runs before the seat's access lists are made
  bool runsOnAdd = true;
  bool runsOnChange = true;
  std::optional<std::uint32_t> mode;
  std::string group;
};

// A file of rules for a node that another of the same name keeps from being read.
struct HiddenRules {
  std::string file;
  std::string hiddenBy;
  bool isMask = false;  // the other holds nothing: it is there to hide this one
};

// One entry of a node's access list that names a user or a group.
struct AccessEntry {
  bool isGroup = false;
  std::uint32_t id = 0;
  bool mayRead = false;  // what the list's mask leaves of it
  bool mayWrite = false;
};

struct NodeFacts {
  std::string path;  // "/dev/hidraw3"
  bool exists = false;
  std::uint32_t mode = 0;  // permission bits
  std::uint32_t owner = 0;
  std::uint32_t group = 0;
  std::string groupName;  // empty: it has none
  std::vector<AccessEntry> accessList;
  bool mayRead = false;  // this user, in the end
  bool mayWrite = false;
  std::optional<bool> isTaggedForSeat;  // none: udev has not dealt with it
  std::vector<UdevRuleFacts> rules;     // in the order in which they run
  std::vector<HiddenRules> hiddenRules;
  std::vector<NodeHolder> holders;
  bool areAllHoldersKnown = true;  // else some programs could not be looked into
};

struct HIDFacts {
  std::string name;  // "0003:0EB7:0020.0001"
  std::int64_t productID = 0;
  std::string product;  // its own text
  std::string serialNumber;
  std::string usbInterface;  // that it belongs to; empty: not on USB
  std::string driver;        // empty: none
  Bytes descriptor;
  std::optional<NodeFacts> node;  // none: the kernel made none
};

// The Flatpak sandbox that this program runs in.
struct SandboxFacts {
  std::string application;      // its ID
  bool showsHostRules = false;  // all udev rules of the system outside; else only some or none
};

// The user who asks.
struct UserFacts {
  std::uint32_t id = 0;
  std::vector<std::uint32_t> groups;
  std::string name;
  std::string home;
};

struct MachineFacts {
  bool isSimulated = false;  // it has no devices of its own then
  bool hasUSB = false;       // it shows a USB bus
  bool hasUdev = false;
  bool isContainer = false;
  std::optional<SandboxFacts> sandbox;
  bool isRuleLost = false;  // the rule of this program was kept over updates, and is gone
  std::optional<std::vector<std::uint32_t>> seatedUsers;  // none: nobody keeps seats
  UserFacts user;
  std::string kernel;
  std::string distribution;
  std::string sessionType;  // "wayland", "x11", "tty"; empty: none
  std::string desktop;
  std::vector<USBDeviceFacts> usb;
  std::vector<HIDFacts> hid;
  std::vector<UdevRule> vendorRules;  // that name the vendor, whatever they do
};

// Where facts about a machine come from. Any thread may call.
class HIDSurvey {
 public:
  virtual ~HIDSurvey() = default;

  // The facts about the devices of a vendor. Blocks for a fraction of a second; opens no device and
  // changes nothing. What cannot be read is left out.
  virtual MachineFacts take(std::int64_t vendorID) = 0;

  // This machine's facts.
  static HIDSurvey& system();
};

}  // namespace quorvane
