#include "doctor/report.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/system_survey.h"
#include "support/bytes.h"
#include "support/version.h"
#include "tests/cli/attached_nodes.h"
#include "tests/platform/system_tree.h"

namespace quorvane {
namespace {

// A base with everything that a report contains.
class Report : public testing::Test {
 protected:
  Report() {
    tree_.addOpenBase();
    tree_.addProcess(200, "game", SystemTree::node);
    tree_.file("/usr/lib/udev/rules.d/60-a.rules",
               "ATTRS{idVendor}==\"0eb7\", ATTRS{serial}==\"QV-0815\", MODE=\"0660\"\n");
    device_ = &nodes_.add(0x0020, "QV-4711", SystemTree::node);
  }

  Diagnosis diagnose() {
    SystemSurvey survey(tree_.root(), 100);
    Diagnosis diagnosis = examine({nodes_, USBBus::system(), device_->clock(), survey}, {}, {});
    diagnosis.facts.machine.user.name = "anna";
    diagnosis.facts.machine.user.home = "/home/anna";
    return diagnosis;
  }

  SystemTree tree_;
  AttachedNodes nodes_;
  FaultyDevice* device_ = nullptr;
};

TEST_F(Report, HoldsWhatABugReportNeeds) {
  const Diagnosis diagnosis = diagnose();
  const std::string text = reportText(diagnosis, {"Connected to QV-4711", "from /home/anna/x"});
  const std::vector<std::string> parts{
      "\nChecks\n" + checksText(diagnosis.checks),
      "  Quorvane      " + std::string(version()) + " (" + std::string(commit()) + ")\n",
      "  Distribution  Debian GNU/Linux 12 (bookworm)\n",
      "  Kernel        6.1.0-18-amd64\n",
      "  Session       ",
      "  Desktop       ",
      "\nUSB devices\n  3-1  0eb7:0020  FANATEC CSL DD\n    serial number (masked)\n",
      "    3-1:1.0  HID, driver usbhid\n",
      "\nHID devices\n  0003:0EB7:0020.0001  FANATEC CSL DD  driver hid-generic\n",
      "    interface 3-1:1.0, serial number (masked)\n",
      "    node /dev/hidraw3, mode 0666, owner ",
      "    this user may read: yes, write: yes; tagged for the seat: yes\n",
      "    rule /etc/udev/rules.d/70-quorvane.rules:1\n",
      "    open in game (process 200)\n",
      "    descriptor: 92 bytes\n      05 01 09 04 a1 01 85 01 15 00 27 ff ff 00 00 75\n",
      "\nAs the programs see them\n  0eb7:0020@00000000/1:4  CSL DD / GT DD Pro / ClubSport DD  ",
      "(examined)\n",
      "    output 0xff, 63 bytes\n",
      "\nudev rules that name the vendor\n  /usr/lib/udev/rules.d/60-a.rules:1\n",
      "    ATTRS{idVendor}==\"0eb7\", ATTRS{serial}==\"(serial number)\", MODE=\"0660\"\n",
      "  identity: 64 bytes\n    ff 08 0a 00 ",
      "  menu: 64 bytes\n    ff 03 82 ",
      "\nLast lines of the log\n  Connected to (serial number)\n  from ~/x\n",
  };
  for (const std::string& part : parts) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\nin\n" << text;
  }
}

TEST_F(Report, HoldsNoSerialNumberAndNoName) {
  Diagnosis diagnosis = diagnose();
  diagnosis.checks.push_back({"x", "X", CheckOutcome::failed, "/home/anna/a", "Ask anna"});
  const std::string text = reportText(diagnosis, {"usb-Fanatec_QV-4711-event"});
  for (const char* const secret : {"QV-4711", "QV-0815", "anna"}) {
    EXPECT_EQ(text.find(secret), std::string::npos) << secret << "\nin\n" << text;
  }
}

TEST_F(Report, LeavesBytesAloneThatReadLikeASecret) {
  Diagnosis diagnosis = diagnose();
  const std::string before = reportText(diagnosis);
  diagnosis.facts.machine.user.name = "ff";
  diagnosis.facts.machine.usb.front().serialNumber = "03";
  diagnosis.checks.push_back({"x", "X", CheckOutcome::failed, "Ask ff", ""});
  const std::string text = reportText(diagnosis);
  const auto bytesIn = [](const std::string& report) {
    std::vector<std::string> lines;
    std::istringstream stream(report);
    for (std::string line; std::getline(stream, line);) {
      if (parseHexBytes(line)) lines.push_back(line);
    }
    return lines;
  };
  EXPECT_GT(bytesIn(before).size(), 10U);
  EXPECT_EQ(bytesIn(text), bytesIn(before));
  EXPECT_NE(text.find("Ask (user)\n"), std::string::npos) << text;
}

TEST_F(Report, TellsWhoIsStoppedAtItsTurn) {
  Diagnosis diagnosis = diagnose();
  NodeHolder& holder = diagnosis.facts.machine.hid.front().node->holders.front();
  holder.hasWriteLock = true;
  holder.isStopped = true;
  const std::string text = reportText(diagnosis);
  EXPECT_NE(text.find("    open in game (process 200), at its turn to write, stopped\n"),
            std::string::npos)
      << text;
}

TEST_F(Report, TellsWhatWasNotAnswered) {
  device_->withBase([](SimulatedBase& base) { base.behaviour().silent = true; });
  const std::string text = reportText(diagnose());
  EXPECT_NE(text.find("  identity: 0 bytes\n    Timed out waiting for system report (FF 08)\n"
                      "  menu: 0 bytes\n    Timed out waiting for tuning menu report"),
            std::string::npos)
      << text;
  EXPECT_EQ(text.find("Last lines"), std::string::npos);
}

TEST(ReportOfNothing, SaysSo) {
  const std::string text = reportText(Diagnosis{});
  for (const char* const part :
       {"\nUSB devices\n  none\n", "\nHID devices\n  none\n", "see them\n  none\n",
        "vendor\n  none\n", "  Users seated  not recorded\n"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part;
  }
}

TEST(ChecksText, IsALineForEachCheckAndOneForEachNextStep) {
  EXPECT_EQ(checksText({{"a", "First", CheckOutcome::passed, "fine", ""},
                        {"b", "Second", CheckOutcome::failed, "two\nlines", "Mend it."},
                        {"c", "Third", CheckOutcome::notChecked, "no need", ""}}),
            "ok   First: fine\n"
            "FAIL Second: two lines\n"
            "     Mend it.\n"
            "--   Third: no need\n");
}

TEST(DoctorCheck, OutcomesHaveTextsForPrograms) {
  EXPECT_EQ(rawValue(CheckOutcome::passed), "pass");
  EXPECT_EQ(rawValue(CheckOutcome::failed), "fail");
  EXPECT_EQ(rawValue(CheckOutcome::notChecked), "notChecked");
}

TEST(DoctorCheck, ANotCheckedOneIsNoFailure) {
  const DoctorCheck passed{"a", "A", CheckOutcome::passed, "", ""};
  const DoctorCheck notChecked{"b", "B", CheckOutcome::notChecked, "", ""};
  const DoctorCheck failed{"c", "C", CheckOutcome::failed, "", "x"};
  EXPECT_TRUE(allPassed({}));
  EXPECT_TRUE(allPassed({passed, notChecked}));
  EXPECT_FALSE(allPassed({passed, failed, notChecked}));
}

}  // namespace
}  // namespace quorvane
