#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include "simulator/simulated_base.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {

// The system files (/sys, /proc, /run, /etc, /dev) of a Linux machine, in a temporary directory.
// With at most one base, at USB port 3-1, with the node /dev/hidraw3.
class SystemTree {
 public:
  static constexpr const char* node = "/dev/hidraw3";
  static constexpr const char* ourRule = "/etc/udev/rules.d/70-quorvane.rules";
  static constexpr const char* ruleText =
      "SUBSYSTEM==\"hidraw\", KERNELS==\"0003:0EB7:*\", TAG+=\"uaccess\"\n";

  // A system with USB, udev, a seat and nothing attached.
  SystemTree() {
    directory("/sys/bus/usb/devices");
    directory("/sys/bus/hid/devices");
    directory("/dev");
    directory("/proc");
    directory("/run/udev/data");
    seat(ordinarySeat());
    file("/proc/sys/kernel/osrelease", "6.1.0-18-amd64\n");
    file("/etc/os-release", "NAME=\"Debian\"\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n");
  }

  std::filesystem::path root() const { return directory_.path(); }
  std::filesystem::path place(std::string_view path) const {
    return root() / std::filesystem::path(path).relative_path();
  }

  void directory(std::string_view path) const { std::filesystem::create_directories(place(path)); }
  void file(std::string_view path, std::string_view content) const {
    std::filesystem::create_directories(place(path).parent_path());
    putFile(place(path), content);
  }
  void link(std::string_view path, std::string_view target) const {
    std::filesystem::create_directories(place(path).parent_path());
    std::filesystem::create_symlink(target, place(path));
  }
  void remove(std::string_view path) const { std::filesystem::remove_all(place(path)); }

  // The user ID that AsOrdinaryUser gives this process: its own if it is not root.
  static unsigned ordinarySeat() { return ::geteuid() == 0 ? 65534U : ::geteuid(); }

  void seat(unsigned user) const {
    file("/run/systemd/seats/seat0",
         "# this is private\nACTIVE_UID=" + std::to_string(user) + "\n");
  }

  // The USB device.
  void attach(std::string_view productID = "0020") const {
    const std::string device = "/sys/devices/usb3/3-1/";
    file(device + "idVendor", "0eb7\n");
    file(device + "idProduct", std::string(productID) + "\n");
    file(device + "product", "FANATEC CSL DD\n");
    file(device + "serial", "QV-4711\n");
    file(device + "authorized", "1\n");
    link("/sys/bus/usb/devices/3-1", "../../../devices/usb3/3-1");
  }

  // Its interface. Empty driver: none is bound.
  void addInterface(std::string_view driver = "usbhid",
                    std::string_view interfaceClass = "03") const {
    const std::string interface = "/sys/devices/usb3/3-1/3-1:1.0/";
    file(interface + "bInterfaceClass", std::string(interfaceClass) + "\n");
    if (!driver.empty()) {
      link(interface + "driver", "../../../../bus/usb/drivers/" + std::string(driver));
    }
    link("/sys/bus/usb/devices/3-1:1.0", "../../../devices/usb3/3-1/3-1:1.0");
  }

  // Its HID device. Empty driver: none is bound.
  void addHID(std::string_view driver = "hid-generic", std::string_view productID = "0020") const {
    const std::string name = "0003:0EB7:" + std::string(productID) + ".0001";
    const std::string device = "/sys/devices/usb3/3-1/3-1:1.0/" + name + "/";
    file(device + "uevent", "HID_ID=0003:00000EB7:0000" + std::string(productID) +
                                "\nHID_NAME=FANATEC CSL DD\nHID_UNIQ=QV-4711\n");
    const Bytes& descriptor = SimulatedBase::reportDescriptor();
    file(device + "report_descriptor", std::string(descriptor.begin(), descriptor.end()));
    if (!driver.empty()) link(device + "driver", "../x/" + std::string(driver));
    link("/sys/bus/hid/devices/" + name, "../../../devices/usb3/3-1/3-1:1.0/" + name);
  }

  // Its node, in /sys and with this mode in /dev.
  void addNode(mode_t mode = 0) const {
    directory("/sys/bus/hid/devices/0003:0EB7:0020.0001/hidraw/hidraw3");
    file("/sys/class/hidraw/hidraw3/dev", "240:3\n");
    file(node, "");
    EXPECT_EQ(::chmod(place(node).c_str(), mode), 0);
  }

  // udev's database entry for the node.
  void udevKnows(bool isTagged) const {
    file("/run/udev/data/c240:3", isTagged ? "I:123\nG:uaccess\nQ:uaccess\nV:1\n" : "I:123\nV:1\n");
  }

  // A base that only root may open; a base that everyone may open.
  void addClosedBase() const { addBase(0); }
  void addOpenBase() const {
    addBase(0666);
    file(ourRule, ruleText);
    udevKnows(true);
  }

  // A process with an open file: `opened` is the target of its link in /proc/PID/fd.
  void addProcess(int process, std::string_view name, std::string_view opened) const {
    const std::string directory = "/proc/" + std::to_string(process);
    file(directory + "/comm", std::string(name) + "\n");
    link(directory + "/fd/0", "/dev/null");
    link(directory + "/fd/7", opened);
  }

  // A line of /proc/locks for a flock() of the process on the node; kind: READ or WRITE.
  std::string lockLine(int process, std::string_view kind) const {
    struct stat status {};
    EXPECT_EQ(::stat(place(node).c_str(), &status), 0);
    std::array<char, 200> line{};
    std::snprintf(line.data(), line.size(), "3: FLOCK  ADVISORY  %.*s %d %02x:%02x:%ju 0 EOF\n",
                  static_cast<int>(kind.size()), kind.data(), process, major(status.st_dev),
                  minor(status.st_dev), static_cast<uintmax_t>(status.st_ino));
    return line.data();
  }

 private:
  void addBase(mode_t mode) const {
    attach();
    addInterface();
    addHID();
    addNode(mode);
  }

  TemporaryDirectory directory_;
};

}  // namespace quorvane
