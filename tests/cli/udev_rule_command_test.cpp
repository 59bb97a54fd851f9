#include <gtest/gtest.h>

#include "cli/udev_rule.h"
#include "tests/cli/json_schema.h"
#include "tests/cli/udev_rule_fixture.h"
#include "tests/support/scoped_variable.h"

namespace quorvane {
namespace {

using UdevRuleInstallation = UdevRuleTest;
using UdevRuleRemoval = UdevRuleTest;

constexpr const char* packageRule = "/usr/lib/udev/rules.d/70-quorvane.rules";
const std::string ruleText(udevRuleText());

Lines namesIn(const std::filesystem::path& directory) {
  Lines names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    names.push_back(entry.path().filename());
  }
  return names;
}

TEST_F(UdevRuleInstallation, WritesTheRuleAndHasUdevApplyIt) {
  FaultyDevice& base = attachNode(false);
  afterwards_ = [&] { base.failOpenWith(HIDReturnCode::success); };
  EXPECT_EQ(
      runOnTree("udev-rule --install"),
      (Outcome{ExitStatus::done,
               "Installed /etc/udev/rules.d/70-quorvane.rules\n/dev/hidraw3 opens now\n", ""}));
  EXPECT_EQ(contentAt(ownRuleFile), ruleText);
  EXPECT_EQ(std::filesystem::status(tree_.place(ownRuleFile)).permissions(),
            std::filesystem::perms(0644));
  EXPECT_EQ(namesIn(tree_.place("/etc/udev/rules.d")), Lines{"70-quorvane.rules"});
  EXPECT_EQ(udevadmLines(),
            (Lines{"control --reload", "trigger --action=change /sys/class/hidraw/hidraw3",
                   "trigger --action=change --subsystem-match=usb --attr-match=idVendor=0eb7",
                   "settle --timeout=10"}));
  EXPECT_EQ(ran_.size(), 1U);
  EXPECT_EQ(asker(), "sudo");
  EXPECT_FALSE(isThere(keepListFile));
  EXPECT_EQ(base.transcript().lines(), (Lines{"open", "close"}));
}

TEST_F(UdevRuleInstallation, SaysThatThereIsNoBaseToTry) {
  EXPECT_EQ(runOnTree("udev-rule --install"),
            (Outcome{ExitStatus::done,
                     "Installed /etc/udev/rules.d/70-quorvane.rules\n"
                     "No base is attached to try it with\n",
                     ""}));
  EXPECT_EQ(udevadmLines().size(), 3U);  // no trigger of all devices
}

TEST_F(UdevRuleInstallation, ABaseThatStaysClosedIsAFailure) {
  attachNode(false);
  EXPECT_EQ(runOnTree("udev-rule --install"),
            (Outcome{ExitStatus::failed, "Installed /etc/udev/rules.d/70-quorvane.rules\n",
                     "/dev/hidraw3 still does not open. The reason is told by: quorvanectl "
                     "doctor\n"}));
}

TEST_F(UdevRuleInstallation, NeedsNoRootForWhatIsThere) {
  attachNode(true);
  tree_.file(ownRuleFile, ruleText);
  EXPECT_EQ(runOnTree("udev-rule --install"),
            (Outcome{ExitStatus::done,
                     "The rule is in /etc/udev/rules.d/70-quorvane.rules already\n"
                     "/dev/hidraw3 opens now\n",
                     ""}));
  tree_.remove(ownRuleFile);
  tree_.file(packageRule, "# of another version\n");
  EXPECT_EQ(runOnTree("udev-rule --install"),
            (Outcome{ExitStatus::done,
                     "The rule in /usr/lib/udev/rules.d/70-quorvane.rules is at work already; "
                     "nothing to install\n/dev/hidraw3 opens now\n",
                     ""}));
  EXPECT_EQ(ran_, std::vector<Lines>{});
}

TEST_F(UdevRuleInstallation, AppliesARuleThatIsThereToABaseThatIsClosed) {
  FaultyDevice& base = attachNode(false);
  afterwards_ = [&] { base.failOpenWith(HIDReturnCode::success); };
  tree_.file(packageRule, ruleText);
  EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
  EXPECT_EQ(udevadmLines().size(), 4U);
  EXPECT_FALSE(isThere(ownRuleFile));
}

TEST_F(UdevRuleInstallation, ReplacesWhatIsInItsPlace) {
  tree_.file(ownRuleFile, "# of another version\n");
  EXPECT_EQ(runOnTree("udev-rule --install").out,
            "Replaced /etc/udev/rules.d/70-quorvane.rules\nNo base is attached to try it with\n");
  EXPECT_EQ(contentAt(ownRuleFile), ruleText);

  // A symbolic link is replaced, not its target.
  tree_.remove(ownRuleFile);
  tree_.file("/elsewhere", "kept");
  tree_.link(ownRuleFile, tree_.place("/elsewhere").string());
  EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
  EXPECT_EQ(contentAt("/elsewhere"), "kept");
  EXPECT_EQ(contentAt(ownRuleFile), ruleText);

  // A link that masks a package's rule is replaced.
  tree_.file(packageRule, ruleText);
  tree_.remove(ownRuleFile);
  tree_.link(ownRuleFile, "/dev/null");
  EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
  EXPECT_EQ(contentAt(ownRuleFile), ruleText);
}

TEST_F(UdevRuleInstallation, KeepsTheRuleOverUpdatesThatReplaceEtc) {
  const std::string list =
      "/etc/udev/rules.d/70-quorvane.rules\n/etc/atomic-update.conf.d/quorvane.conf\n";
  tree_.file("/etc/os-release", "NAME=\"SteamOS\"\nID=steamos\n");
  EXPECT_EQ(runOnTree("udev-rule --install").out,
            "Installed /etc/udev/rules.d/70-quorvane.rules\n"
            "/etc/atomic-update.conf.d/quorvane.conf keeps it when the system is updated\n"
            "No base is attached to try it with\n");
  EXPECT_EQ(contentAt(keepListFile), list);

  tree_.file("/etc/os-release", "ID=other\n");
  tree_.remove(keepListFile);
  EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
  EXPECT_EQ(contentAt(keepListFile), list);
  EXPECT_EQ(ran_.size(), 2U);
  EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
  EXPECT_EQ(ran_.size(), 2U);
}

TEST_F(UdevRuleInstallation, AsksForRootWhereItFits) {
  struct Case {
    Caller caller;
    Lines programs;
    std::string asker;
  };
  const std::vector<Case> cases{
      {{true, true, true}, {"pkexec", "sudo"}, ""},
      {{false, true, true}, {"pkexec", "sudo"}, "pkexec"},
      {{false, true, false}, {"pkexec", "sudo"}, "pkexec"},
      {{false, false, true}, {"pkexec", "sudo"}, "sudo"},
      {{false, false, true}, {"pkexec"}, "pkexec"},
      {{false, true, true}, {"sudo"}, "sudo"},
  };
  for (const Case& each : cases) {
    caller_ = each.caller;
    for (const char* const name : {"pkexec", "sudo"}) tree_.remove("/usr/bin/" + std::string(name));
    for (const std::string& name : each.programs) addProgram(name);
    tree_.remove(ownRuleFile);
    EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
    EXPECT_EQ(asker(), each.asker);
    EXPECT_TRUE(isThere(ownRuleFile));
  }
}

TEST_F(UdevRuleInstallation, SaysThatNothingIsThereToBecomeRootWith) {
  for (const Caller& caller : {Caller{false, false, false}, Caller{false, true, false}}) {
    caller_ = caller;
    EXPECT_EQ(runOnTree("udev-rule --install"),
              (Outcome{ExitStatus::failed, "",
                       "That takes root, and there is no way to ask for it here: neither pkexec "
                       "in a graphical session nor sudo on a terminal\n"}));
  }
  EXPECT_EQ(ran_, std::vector<Lines>{});
}

TEST_F(UdevRuleInstallation, EveryFailureSaysWhatIsInPlaceAndWhatToDo) {
  const std::vector<std::pair<int, std::string>> cases{
      {1,
       "Nothing was changed: sudo did not let you act as root. Try again, or ask who administers "
       "this machine to type: quorvanectl udev-rule --install"},
      {41,
       "/etc/udev/rules.d/70-quorvane.rules could not be changed, even by root. Look at what "
       "keeps it, then type again: quorvanectl udev-rule --install"},
      {42,
       "The rule is in place, but /etc/atomic-update.conf.d/quorvane.conf could not be written: "
       "the next update of the system may take the rule away. Type again after it: quorvanectl "
       "udev-rule --install"},
      {43, "The files are changed, but udev could not be told. Restart the computer"},
      {45,
       "Nothing was changed: the files below /etc are read-only here, even for root. Make them "
       "writable and type again: quorvanectl udev-rule --install"},
      {-1,
       "It is not known what was changed: what ran as root ended with status -1. Look at it "
       "with: quorvanectl doctor"},
  };
  for (const auto& [status, message] : cases) {
    endsWith_ = status;
    EXPECT_EQ(runOnTree("udev-rule --install"), (Outcome{ExitStatus::failed, "", message + "\n"}));
    EXPECT_EQ(runOnTree("--json udev-rule --install").out, errorDocument("fileFailed", message));
  }
  caller_.isGraphical = true;
  addProgram("pkexec");
  for (const int status : {126, 127}) {
    endsWith_ = status;
    EXPECT_NE(runOnTree("udev-rule --install").err.find("pkexec did not let you act as root"),
              std::string::npos);
  }
}

TEST_F(UdevRuleInstallation, TheScriptTellsFailuresApart) {
  tree_.file("/etc/udev", "a file");
  EXPECT_NE(runOnTree("udev-rule --install").err.find("could not be changed, even by root"),
            std::string::npos);
  tree_.remove("/etc/udev");

  tree_.directory("/etc/atomic-update.conf.d/quorvane.conf");
  EXPECT_NE(runOnTree("udev-rule --install").err.find("The rule is in place, but"),
            std::string::npos);
  EXPECT_TRUE(isThere(ownRuleFile));

  addProgram("udevadm", "/bin/false");
  tree_.remove("/etc/atomic-update.conf.d");
  tree_.remove(ownRuleFile);
  EXPECT_NE(runOnTree("udev-rule --install").err.find("udev could not be told"), std::string::npos);
  EXPECT_TRUE(isThere(ownRuleFile));
}

TEST_F(UdevRuleInstallation, AMachineWithoutUdevIsSaidToBeOne) {
  tree_.remove("/usr/bin/udevadm");
  EXPECT_EQ(runOnTree("udev-rule --install"),
            (Outcome{ExitStatus::failed, "",
                     "There is no udevadm here, so no udev either that would read the rule. In a "
                     "container, type the command outside of it\n"}));
  EXPECT_EQ(ran_, std::vector<Lines>{});
}

TEST_F(UdevRuleInstallation, RootOpensWhatOthersMayNot) {
  attachNode(true);
  caller_ = {true, false, false};
  EXPECT_EQ(runOnTree("udev-rule --install").out,
            "Installed /etc/udev/rules.d/70-quorvane.rules\n/dev/hidraw3 opens for root; whether "
            "it does for you is told by: quorvanectl devices\n");
}

TEST_F(UdevRuleInstallation, RunsProgramsOfTheSystemAloneWhateverThePathSays) {
  for (const char* const name : {"sh", "mktemp", "mv", "chmod", "sync", "mkdir", "udevadm"}) {
    std::filesystem::create_symlink("/bin/false", directory_ / name);
  }
  const ScopedVariable path("PATH", directory_.path().string());
  EXPECT_EQ(runOnTree("udev-rule --install").status, ExitStatus::done);
  EXPECT_EQ(contentAt(ownRuleFile), ruleText);
}

TEST_F(UdevRuleInstallation, IsTypedOutsideOfASandbox) {
  tree_.file("/.flatpak-info", "[Application]\nname=org.example.Quorvane\n");
  for (const char* const line : {"udev-rule --install", "udev-rule --remove"}) {
    EXPECT_EQ(
        runOnTree(line),
        (Outcome{ExitStatus::failed, "",
                 "This program runs in a sandbox, which has no udev. Type outside of it: "
                 "flatpak run --command=quorvanectl org.example.Quorvane udev-rule | sudo tee "
                 "/etc/udev/rules.d/70-quorvane.rules && sudo udevadm control --reload && "
                 "sudo udevadm trigger\n"}));
  }
  EXPECT_EQ(ran_, std::vector<Lines>{});
  EXPECT_EQ(runOnTree("udev-rule").out, ruleText);
}

TEST_F(UdevRuleInstallation, IsNothingForASimulatedBase) {
  for (const char* const line :
       {"--simulate udev-rule --install", "--simulate udev-rule --remove"}) {
    const Outcome outcome = runOnTree(line);
    EXPECT_EQ(outcome.status, ExitStatus::wrongUsage);
    EXPECT_NE(outcome.err.find("A simulated base needs no rule"), std::string::npos);
  }
  EXPECT_EQ(runOnTree("udev-rule --install --remove").status, ExitStatus::wrongUsage);
  EXPECT_EQ(ran_, std::vector<Lines>{});
}

TEST_F(UdevRuleRemoval, TakesAwayWhatWasInstalled) {
  tree_.directory("/etc/atomic-update.conf.d");
  runOnTree("udev-rule --install");
  EXPECT_EQ(runOnTree("udev-rule --remove"),
            (Outcome{ExitStatus::done,
                     "Removed /etc/udev/rules.d/70-quorvane.rules\n"
                     "Removed /etc/atomic-update.conf.d/quorvane.conf\n"
                     "A base that is attached may stay open to you until it is plugged in again\n",
                     ""}));
  EXPECT_FALSE(isThere(ownRuleFile));
  EXPECT_FALSE(isThere(keepListFile));
  EXPECT_EQ(udevadmLines().back(), "control --reload");
  EXPECT_EQ(runOnTree("udev-rule --remove"),
            (Outcome{ExitStatus::done,
                     "There is no /etc/udev/rules.d/70-quorvane.rules to remove\n", ""}));
  EXPECT_EQ(ran_.size(), 2U);
}

TEST_F(UdevRuleRemoval, LeavesTheRuleOfAPackage) {
  tree_.file(packageRule, ruleText);
  tree_.link(ownRuleFile, "/dev/null");
  EXPECT_EQ(runOnTree("udev-rule --remove").out,
            "Removed /etc/udev/rules.d/70-quorvane.rules\n"
            "The rule in /usr/lib/udev/rules.d/70-quorvane.rules stays at work: remove the package "
            "that brought it\n");
  EXPECT_TRUE(isThere(packageRule));
}

TEST_F(UdevRuleRemoval, FailuresAreSaid) {
  tree_.file(ownRuleFile, ruleText);
  endsWith_ = 1;
  EXPECT_EQ(runOnTree("udev-rule --remove"),
            (Outcome{ExitStatus::failed, "",
                     "Nothing was changed: sudo did not let you act as root. Try again, or ask who "
                     "administers this machine to type: quorvanectl udev-rule --remove\n"}));
}

TEST_F(UdevRuleInstallation, GivesOneDocument) {
  attachNode(true);
  tree_.directory("/etc/atomic-update.conf.d");
  const std::vector<std::pair<std::string, Json>> cases{
      {"udev-rule", {{"file", ownRuleFile}, {"rule", ruleText}}},
      {"udev-rule --install",
       {{"file", ownRuleFile},
        {"rule", ruleText},
        {"change", "installed"},
        {"keepList", keepListFile},
        {"bases", Json::array({{{"node", "/dev/hidraw3"}, {"opens", true}}})}}},
      {"udev-rule --remove",
       {{"file", ownRuleFile},
        {"rule", ruleText},
        {"change", "removed"},
        {"removed", {ownRuleFile, keepListFile}},
        {"servedBy", nullptr}}},
  };
  for (const auto& [line, wanted] : cases) {
    const Outcome outcome = runOnTree("--json " + line);
    EXPECT_EQ(outcome, (Outcome{ExitStatus::done, documentText(wanted) + "\n", ""})) << line;
    EXPECT_EQ(schemaFaults(schemaNamed("udev-rule"), Json::parse(outcome.out)), Lines{}) << line;
  }
}

}  // namespace
}  // namespace quorvane
