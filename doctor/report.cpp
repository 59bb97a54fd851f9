#include "doctor/report.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "doctor/masking.h"
#include "support/bytes.h"
#include "support/text.h"
#include "support/version.h"

namespace quorvane {
namespace {

constexpr std::size_t bytesPerLine = 16;

// In the order of CheckOutcome.
constexpr std::array<const char*, 3> marks{"ok", "FAIL", "--"};

std::string orNone(const std::string& text) { return text.empty() ? "none" : text; }

std::string serialText(const std::string& serial) { return serial.empty() ? "none" : "(masked)"; }

// Builds the text, section by section. Masks all texts from the facts, but not hex dumps: they
// contain no words, and the report needs them.
class ReportWriter {
 public:
  explicit ReportWriter(std::vector<Secret> secrets) : secrets_(std::move(secrets)) {}

  void section(const char* title) { text_ += fmt::format("\n{}\n", title); }

  // Adds a line; `depth` is its indentation.
  void line(std::string_view text, std::size_t depth = 1) {
    put(masked(oneLine(text), secrets_), depth);
  }

  void bytes(const char* name, const Bytes& bytes, std::size_t depth = 1) {
    line(fmt::format("{}: {} bytes", name, bytes.size()), depth);
    for (ByteView rest = bytes; !rest.empty();) {
      const std::size_t length = std::min(rest.size(), bytesPerLine);
      put(hexDump(rest.first(length)), depth + 1);
      rest = rest.subspan(length);
    }
  }

  void paragraph(std::string_view text) { text_ += masked(text, secrets_); }

  // Adds fixed text, which is not masked.
  void constant(std::string_view text) { text_ += text; }

  std::string take() { return std::move(text_); }

 private:
  void put(std::string_view text, std::size_t depth) {
    text_ += fmt::format("{:{}}{}\n", "", 2 * depth, text);
  }

  const std::vector<Secret> secrets_;
  std::string text_;
};

std::string stateOf(const NodeHolder& holder) {
  return fmt::format("{}{}{}", holder.isExclusive ? ", exclusively" : "",
                     holder.hasWriteLock ? ", at its turn to write" : "",
                     holder.isStopped ? ", stopped" : "");
}

void writeSystem(ReportWriter& writer, const MachineFacts& machine) {
  writer.section("System");
  writer.line(fmt::format("Quorvane      {} ({})", version(), commit()));
  writer.line(fmt::format("Distribution  {}", orNone(machine.distribution)));
  writer.line(fmt::format("Kernel        {}", orNone(machine.kernel)));
  writer.line(fmt::format("Session       {}", orNone(machine.sessionType)));
  writer.line(fmt::format("Desktop       {}", orNone(machine.desktop)));
  writer.line(fmt::format("udev          {}", machine.hasUdev ? "yes" : "no"));
  writer.line(fmt::format("Container     {}", machine.isContainer ? "yes" : "no"));
  if (machine.sandbox) {
    writer.line(fmt::format("Sandbox       {}; rules outside shown: {}",
                            orNone(machine.sandbox->application),
                            machine.sandbox->showsHostRules ? "yes" : "no"));
  }
  if (machine.isRuleLost) writer.line("udev rule     was installed, and is gone");
  std::string seated = "not recorded";
  if (machine.seatedUsers) {
    seated =
        fmt::format("[{}]; this user: {}", fmt::join(*machine.seatedUsers, ", "), machine.user.id);
  }
  writer.line(fmt::format("Users seated  {}", seated));
}

std::string usbID(std::int64_t productID) {
  return fmt::format("{}:{:04x}", Fanatec::vendorHex, static_cast<std::uint32_t>(productID));
}

void writeUSB(ReportWriter& writer, const std::vector<USBDeviceFacts>& devices) {
  writer.section("USB devices");
  if (devices.empty()) writer.line("none");
  for (const USBDeviceFacts& device : devices) {
    writer.line(fmt::format("{}  {}  {}", device.name, usbID(device.productID), device.product));
    writer.line(fmt::format("serial number {}{}", serialText(device.serialNumber),
                            device.isAuthorized ? "" : ", not authorized"),
                2);
    for (const USBInterfaceFacts& interface : device.interfaces) {
      writer.line(fmt::format("{}  {}, driver {}", interface.name,
                              interface.isHID ? "HID" : "not HID", orNone(interface.driver)),
                  2);
    }
  }
}

void writeNode(ReportWriter& writer, const NodeFacts& node) {
  writer.line(fmt::format("node {}{}, mode {:04o}, owner {}, group {} ({})", node.path,
                          node.exists ? "" : " (missing)", node.mode, node.owner, node.group,
                          orNone(node.groupName)),
              2);
  writer.line(fmt::format("this user may read: {}, write: {}; tagged for the seat: {}",
                          node.mayRead ? "yes" : "no", node.mayWrite ? "yes" : "no",
                          !node.isTaggedForSeat   ? "unknown"
                          : *node.isTaggedForSeat ? "yes"
                                                  : "no"),
              2);
  for (const AccessEntry& entry : node.accessList) {
    writer.line(fmt::format("access list: {} {} {}{}", entry.isGroup ? "group" : "user", entry.id,
                            entry.mayRead ? 'r' : '-', entry.mayWrite ? 'w' : '-'),
                2);
  }
  for (const UdevRuleFacts& rule : node.rules) {
    writer.line(fmt::format("rule {}:{}", rule.rule.file, rule.rule.line), 2);
  }
  for (const HiddenRules& hidden : node.hiddenRules) {
    writer.line(fmt::format("rule {} hidden by {}", hidden.file, hidden.hiddenBy), 2);
  }
  for (const NodeHolder& holder : node.holders) {
    writer.line(
        fmt::format("open in {} (process {}){}", holder.program, holder.process, stateOf(holder)),
        2);
  }
}

void writeHID(ReportWriter& writer, const std::vector<HIDFacts>& devices) {
  writer.section("HID devices");
  if (devices.empty()) writer.line("none");
  for (const HIDFacts& device : devices) {
    writer.line(
        fmt::format("{}  {}  driver {}", device.name, device.product, orNone(device.driver)));
    writer.line(fmt::format("interface {}, serial number {}", orNone(device.usbInterface),
                            serialText(device.serialNumber)),
                2);
    if (device.node) writeNode(writer, *device.node);
    writer.bytes("descriptor", device.descriptor, 2);
  }
}

void writePrograms(ReportWriter& writer, const DoctorFacts& facts) {
  writer.section("As the programs see them");
  if (facts.devices.empty()) writer.line("none");
  for (const HIDDeviceInfo& device : facts.devices) {
    const bool isExamined = facts.base && facts.base->id == device.id &&
                            facts.base->device->node() == device.device->node();
    writer.line(
        fmt::format("{}  {}{}", device.id, device.displayName(), isExamined ? "  (examined)" : ""));
    writer.line(fmt::format("version 0x{:04x}, serial number {}",
                            static_cast<std::uint32_t>(device.versionNumber),
                            serialText(device.serialNumber)),
                2);
    for (const HIDReportSummary& report : device.reports) {
      writer.line(fmt::format("{} 0x{:02x}, {} bytes", rawValue(report.kind), report.reportID,
                              report.byteLength),
                  2);
    }
    // Only if the section on HID devices had none.
    if (facts.machine.hid.empty()) {
      writer.bytes("descriptor", device.reportDescriptor.bytes(), 2);
    }
  }
}

void writeRules(ReportWriter& writer, const std::vector<UdevRule>& rules) {
  writer.section("udev rules that name the vendor");
  if (rules.empty()) writer.line("none");
  for (const UdevRule& rule : rules) {
    writer.line(fmt::format("{}:{}", rule.file, rule.line));
    writer.line(rule.text, 2);
  }
}

void writeAnswers(ReportWriter& writer, const BaseAnswers& answers) {
  writer.section("Answers");
  if (!answers.openFailure.empty()) writer.line("not opened: " + answers.openFailure);
  if (answers.outOfTime) writer.line("the base did not take the questions in time");
  writer.bytes("identity", answers.identity ? answers.identity->raw() : Bytes());
  if (!answers.identityFailure.empty()) writer.line(answers.identityFailure, 2);
  writer.bytes("menu", answers.tuning ? answers.tuning->raw() : Bytes());
  if (!answers.tuningFailure.empty()) writer.line(answers.tuningFailure, 2);
}

}  // namespace

std::string checksText(const std::vector<DoctorCheck>& checks) {
  std::string text;
  for (const DoctorCheck& check : checks) {
    text += fmt::format("{:<4} {}: {}\n", marks.at(static_cast<std::size_t>(check.outcome)),
                        check.title, oneLine(check.finding));
    if (!check.nextStep.empty()) text += fmt::format("     {}\n", oneLine(check.nextStep));
  }
  return text;
}

std::string reportText(const Diagnosis& diagnosis, const std::vector<std::string>& lastLines) {
  const DoctorFacts& facts = diagnosis.facts;
  ReportWriter writer(secretsIn(facts));
  writer.constant(
      "Report of the Quorvane doctor. Serial numbers, user name and home directory are masked;\n"
      "look it over before you send it.\n");
  writer.section("Checks");
  writer.paragraph(checksText(diagnosis.checks));
  writeSystem(writer, facts.machine);
  writeUSB(writer, facts.machine.usb);
  writeHID(writer, facts.machine.hid);
  writePrograms(writer, facts);
  writeRules(writer, facts.machine.vendorRules);
  writeAnswers(writer, facts.answers);
  if (!lastLines.empty()) writer.section("Last lines of the log");
  for (const std::string& line : lastLines) writer.line(line);
  return writer.take();
}

}  // namespace quorvane
