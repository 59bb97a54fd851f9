#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/cli/command_line_fixture.h"
#include "tests/cli/receipts.h"

namespace quorvane {
namespace {

class SetCommand : public CommandLineTest {
 protected:
  std::int64_t valueOnBase(TuningParameter parameter) {
    std::int64_t value = 0;
    base().withBase([&](SimulatedBase& simulated) {
      const auto snapshot = TuningSnapshot::fromReport(simulated.menu().report(), {});
      value = snapshot->value(parameter, simulated.product());
    });
    return value;
  }
};

TEST_F(SetCommand, WritesOneValueAndReadsItBack) {
  base();
  EXPECT_EQ(run("set FF=80"), (Outcome{ExitStatus::done, "FF   80 % (250 ms)\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", writeOf({.forceFeedback = "50"}),
                                 "pause 250 ms", "> ff 03 02 +61", "close"}));
  EXPECT_EQ(valueOnBase(TuningParameter::forceFeedback), 80);
}

TEST_F(SetCommand, WritesInMenuOrderWhateverTheOrderOfTheWords) {
  base();
  EXPECT_EQ(run("set ACP=bt BLI=40 FF=80 SEN=AUTO"),
            (Outcome{ExitStatus::done,
                     "SEN  AUT (250 ms)\n"
                     "FF   80 % (250 ms)\n"
                     "BLI  40 % (250 ms)\n"
                     "ACP  Bt (brake / throttle) (250 ms)\n",
                     ""}));
  EXPECT_EQ(transcript(), linesOfFourWrites());
}

TEST_F(SetCommand, GivesOneDocument) {
  base();
  EXPECT_EQ(
      run("set --json NFR=20 FF=80"),
      (Outcome{ExitStatus::done,
               results({receipt("FF", 80, 80, nullptr, 250), receipt("NFR", 20, 20, nullptr, 250)}),
               ""}));
}

TEST_F(SetCommand, TheReceiptTellsWhatTheBaseKept) {
  base();
  EXPECT_EQ(
      run("set --json brF=57 SEN=0"),
      (Outcome{
          ExitStatus::done,
          results({receipt("SEN", 0, 0, nullptr, 250),
                   noted(receipt("brF", 57, 50, nullptr, 250), "50 %, asked for 57, steps of 10")}),
          ""}));
}

TEST_F(SetCommand, SaysWhatTheBaseRounded) {
  base();
  EXPECT_EQ(run("set SHO=55 SEN=905 FF=80"),
            (Outcome{ExitStatus::done,
                     "SEN  900 deg, asked for 905, steps of 10 (250 ms)\n"
                     "FF   80 % (250 ms)\n"
                     "SHO  50 %, asked for 55, steps of 10 (250 ms)\n",
                     ""}));
  EXPECT_EQ(run("set --json SHO=55"), (Outcome{ExitStatus::done,
                                               results({noted(receipt("SHO", 55, 50, nullptr, 250),
                                                              "50 %, asked for 55, steps of 10")}),
                                               ""}));
}

// The base reports the automatic angle as a number that depends on the product.
TEST_F(SetCommand, CodesTheAutomaticAngleAlikeHoweverItIsAskedFor) {
  base();
  const std::string wanted = results({receipt("SEN", 0, 0, nullptr, 250)});
  for (const char* const word : {"SEN=AUTO", "SEN=0", "SEN=2530"}) {
    EXPECT_EQ(run({"set", "--json", word}), (Outcome{ExitStatus::done, wanted, ""})) << word;
  }
}

TEST_F(SetCommand, ChangesThePresentValue) {
  base();
  EXPECT_EQ(run("set FF+=5 SEN-=100"),
            (Outcome{ExitStatus::done, "SEN  800 deg (250 ms)\nFF   70 % (250 ms)\n", ""}));
  EXPECT_EQ(run("set --json FF-=5"),
            (Outcome{ExitStatus::done, results({receipt("FF", 65, 65, nullptr, 250)}), ""}));
}

TEST_F(SetCommand, AChangeCountsFromTheSetThatWasSelectedFirst) {
  base();
  ASSERT_EQ(run("set SLOT=3 FF=30").status, ExitStatus::done);
  ASSERT_EQ(run("set SLOT=2 FF=60").status, ExitStatus::done);
  EXPECT_EQ(run("set FF+=5 SLOT=3").out, "SLOT 3 (250 ms)\nFF   35 % (250 ms)\n");
}

TEST_F(SetCommand, AChangeThatCannotBeMadeSendsNoWrite) {
  base();
  const std::string range = "FF is 65 % now; 40 more would be outside 0...100";
  const std::string word = "BLI is OFF now, which is no number to change; give the value itself";
  EXPECT_EQ(run("set --json FF+=40 BLI-=5"),
            (Outcome{ExitStatus::failed,
                     results({receipt("FF", nullptr, nullptr, range, 0),
                              receipt("BLI", nullptr, nullptr, word, 0)}),
                     "2 of 2 values not written\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(SetCommand, TakesBackWhatItPrinted) {
  base();
  EXPECT_EQ(run({"set", "SEN=900 deg", "FF=80%", "BLI=OFF (250 ms)", "FFS=PEA",
                 "ACP=CbP (clutch bite point)"}),
            (Outcome{ExitStatus::done,
                     "SEN  900 deg (250 ms)\nFF   80 % (250 ms)\nBLI  OFF (250 ms)\n"
                     "FFS  PEA (250 ms)\nACP  CbP (clutch bite point) (250 ms)\n",
                     ""}));
}

TEST_F(SetCommand, SwitchesTheSetFirst) {
  base();
  EXPECT_EQ(run("set FF=80 SLOT=3"),
            (Outcome{ExitStatus::done, "SLOT 3 (250 ms)\nFF   80 % (250 ms)\n", ""}));
  EXPECT_EQ(transcript()[2], "> ff 03 01 03 +60");
}

TEST_F(SetCommand, WritesInTheLayoutAskedFor) {
  change([](SimulatedBehaviour& behaviour) { behaviour.layout = TuningLayout::inPlace; });
  EXPECT_EQ(run("--layout linux set FF=80").status, ExitStatus::done);
  EXPECT_EQ(transcript()[2], writeOf({.forceFeedback = "50"}, TuningLayout::inPlace));
  EXPECT_EQ(valueOnBase(TuningParameter::forceFeedback), 80);
}

TEST_F(SetCommand, GoesOnAfterAFailure) {
  base();
  const Lines wanted{
      "open",         "> ff 03 02 +61", writeOf({.forceFeedback = "50"}),
      "pause 250 ms", "> ff 03 02 +61", writeOf({.forceFeedback = "50", .naturalFriction = "14"}),
      "pause 250 ms", "> ff 03 02 +61", "close",
  };
  EXPECT_EQ(run("set FF=80 SEN=80 BLI=102 DRI=2 NFR=20"),
            (Outcome{ExitStatus::failed,
                     "SEN  not written: SEN value 80 is outside 90...2520\n"
                     "FF   80 % (250 ms)\n"
                     "BLI  not written: BLI value 102 is outside 0...101\n"
                     "DRI  not written: DRI is not available on CSL DD / GT DD Pro / ClubSport DD\n"
                     "NFR  20 % (250 ms)\n",
                     "3 of 5 values not written\n"}));
  EXPECT_EQ(transcript(), wanted);
}

TEST_F(SetCommand, WithoutTheSetThatTheyAreMeantForValuesAreRefused) {
  const std::string refusal =
      "not written: Invalid report: the base is in set 2 of the standard menu now, not in set ";
  const std::string rest = " of the standard menu; write it again if it belongs there\n";
  const std::string ignored = "The base ignored the SLOT write; it still reports 2";
  change([](SimulatedBehaviour& behaviour) { behaviour.switchDelay = Seconds(1); });
  EXPECT_EQ(run("set SLOT=4 FF=56"),
            (Outcome{ExitStatus::failed,
                     "SLOT not written: " + ignored + "\nFF   " + refusal + "4" + rest,
                     "2 of 2 values not written\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "> ff 03 01 04 +60", "pause 250 ms",
                                 "> ff 03 02 +61", "close"}));
  EXPECT_EQ(
      run("set SLOT=6 FF=56"),
      (Outcome{ExitStatus::failed,
               "SLOT not written: SLOT value 6 is outside 1...5\nFF   " + refusal + "6" + rest,
               "2 of 2 values not written\n"}));
}

TEST_F(SetCommand, ASwitchThatIsNotTakenTellsTheSetOfTheBase) {
  change([](SimulatedBehaviour& behaviour) { behaviour.switchDelay = Seconds(1); });
  const std::string error = "The base ignored the SLOT write; it still reports 2";
  EXPECT_EQ(run("set --json SLOT=4"),
            (Outcome{ExitStatus::failed, results({receipt("SLOT", 4, 2, error, 250)}),
                     "1 of 1 values not written\n"}));
}

TEST_F(SetCommand, AValueOutOfRangeSendsNoWrite) {
  base();
  EXPECT_EQ(run("set --json FF=101"),
            (Outcome{ExitStatus::failed,
                     results({receipt("FF", 101, nullptr, "FF value 101 is outside 0...100", 0)}),
                     "1 of 1 values not written\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(SetCommand, AnIgnoredWriteIsAFailureWithTheValueThatTheBaseKept) {
  change(
      [](SimulatedBehaviour& behaviour) { behaviour.ignored = {TuningParameter::forceFeedback}; });
  const std::string error = "The base ignored the FF write; it still reports 65";
  EXPECT_EQ(run("set FF=80 NFR=20"),
            (Outcome{ExitStatus::failed, "FF   not written: " + error + "\nNFR  20 % (250 ms)\n",
                     "1 of 2 values not written\n"}));
  EXPECT_EQ(
      run("set --json FF=80 NFR=30"),
      (Outcome{ExitStatus::failed,
               results({receipt("FF", 80, 65, error, 250), receipt("NFR", 30, 30, nullptr, 250)}),
               "1 of 2 values not written\n"}));
}

TEST_F(SetCommand, AWriteInAForeignLayoutIsIgnored) {
  change([](SimulatedBehaviour& behaviour) { behaviour.layout = TuningLayout::inPlace; });
  const Outcome outcome = run("set NFR=20");
  EXPECT_EQ(outcome.status, ExitStatus::failed);
  EXPECT_NE(outcome.out.find("NFR  not written: The base ignored the NFR write"), std::string::npos)
      << outcome.out;
}

TEST_F(SetCommand, ASilentBaseFailsBeforeAnythingIsWritten) {
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_EQ(run("set FF=80"), (Outcome{ExitStatus::failed, "", std::string(timeoutText) + "\n"}));
  EXPECT_EQ(run("set --json FF=80"),
            (Outcome{ExitStatus::failed, errorDocument("timeout", timeoutText),
                     std::string(timeoutText) + "\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close",  //
                                 "open", "> ff 03 02 +61", "close"}));
}

TEST_F(SetCommand, ABaseThatFallsSilentGivesAReceiptForEachValue) {
  base();
  atPause(1, [this] { change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; }); });
  EXPECT_EQ(run("set --json SEN=800 FF=80 NFR=20"),
            (Outcome{ExitStatus::failed,
                     results({receipt("SEN", 800, 800, nullptr, 250),
                              receipt("FF", 80, nullptr, timeoutText, 2250),
                              receipt("NFR", 20, nullptr, timeoutText, 2250)}),
                     "2 of 3 values not written\n"}));
}

TEST_F(SetCommand, ABaseThatLeavesAfterAWriteGivesAReceiptForEachValue) {
  change([](SimulatedBehaviour& behaviour) { behaviour.unplugAfter = 4; });
  const std::string gone = "HID I/O failed: SetReport id 0xFF -> device not found";
  EXPECT_EQ(run("set --json SEN=800 FF=80 NFR=20"),
            (Outcome{ExitStatus::failed,
                     results({receipt("SEN", 800, 800, nullptr, 250),
                              receipt("FF", 80, nullptr, gone, 250),
                              receipt("NFR", 20, nullptr, gone, 0)}),
                     "2 of 3 values not written\n"}));
}

TEST_F(SetCommand, ABaseThatLeavesBeforeItAnswersGivesAReceiptForEachValue) {
  change([](SimulatedBehaviour& behaviour) { behaviour.unplugAfter = 5; });
  EXPECT_EQ(
      run("set SEN=800 FF=80 NFR=20"),
      (Outcome{ExitStatus::failed,
               "SEN  800 deg (250 ms)\n"
               "FF   not written: " +
                   std::string(timeoutText) +
                   "\n"
                   "NFR  not written: HID I/O failed: SetReport id 0xFF -> device not found\n",
               "2 of 3 values not written\n"}));
}

TEST_F(SetCommand, AnInterruptionFinishesTheValueInFlight) {
  base();
  atPause(1, [this] { interrupt(); });
  EXPECT_EQ(run("set ACP=2 SEN=800 FF=80 NFR=20"),
            (Outcome{ExitStatus::interrupted, "SEN  800 deg (250 ms)\nFF   80 % (250 ms)\n",
                     "Interrupted; not written: NFR ACP\n"}));
  EXPECT_EQ(valueOnBase(TuningParameter::forceFeedback), 80);
  EXPECT_EQ(valueOnBase(TuningParameter::naturalFriction), 10);
}

TEST_F(SetCommand, AnInterruptionLeavesAWholeDocument) {
  base();
  atPause(0, [this] { interrupt(); });
  EXPECT_EQ(run("set --json SEN=800 FF=80"),
            (Outcome{ExitStatus::interrupted, results({receipt("SEN", 800, 800, nullptr, 250)}),
                     "Interrupted; not written: FF\n"}));
}

TEST_F(SetCommand, AnInterruptionBeforeTheFirstValueWritesNothing) {
  base();
  interrupt();
  EXPECT_EQ(run("set --json SEN=800 FF=80"),
            (Outcome{ExitStatus::interrupted, results({}), "Interrupted; not written: SEN FF\n"}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close"}));
}

TEST_F(SetCommand, AnInterruptionDuringTheLastValueLeavesNothingUnwritten) {
  base();
  atPause(1, [this] { interrupt(); });
  EXPECT_EQ(run("set SEN=800 FF=80"),
            (Outcome{ExitStatus::interrupted, "SEN  800 deg (250 ms)\nFF   80 % (250 ms)\n", ""}));
}

TEST_F(SetCommand, AnInterruptionAfterAFailureTellsBoth) {
  base();
  atPause(0, [this] { interrupt(); });
  EXPECT_EQ(run("set SEN=80 FF=80 NFR=20"),
            (Outcome{ExitStatus::interrupted,
                     "SEN  not written: SEN value 80 is outside 90...2520\nFF   80 % (250 ms)\n",
                     "1 of 3 values not written\nInterrupted; not written: NFR\n"}));
}

}  // namespace
}  // namespace quorvane
