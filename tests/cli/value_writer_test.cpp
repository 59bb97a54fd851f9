#include "cli/value_writer.h"

#include <gtest/gtest.h>

#include "cli/base_access.h"
#include "protocol/error.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class ValueWriter : public CommandLineTest {
 protected:
  Outcome write(const std::vector<Assignment>& values, bool json = false) {
    CapturedStream out;
    CapturedStream err;
    const World world = this->world(out.file(), err.file());
    const GlobalOptions options{{}, {}, {}, json};
    const CommandContext context{world, options};
    const Interruption interruption = world.interruption();
    const OpenBase base(context);
    const TuningSnapshot menu = base->fetchTuning(WheelBase::readTimeout);
    const ExitStatus status =
        writeValues(context, interruption, *base, menu, {values, {HistoryAction::set}});
    return {status, out.text(), err.text()};
  }
};

TEST_F(ValueWriter, WritesInTheOrderGiven) {
  base();
  EXPECT_EQ(write({{P::naturalFriction, 20}, {P::slot, 3}, {P::forceFeedback, 80}}),
            (Outcome{ExitStatus::done,
                     "NFR  20 % (250 ms)\n"
                     "SLOT 3 (250 ms)\n"
                     "FF   80 % (250 ms)\n",
                     ""}));
}

TEST_F(ValueWriter, NothingToWriteReadsTheMenuAndIsDone) {
  base();
  EXPECT_EQ(write({}), (Outcome{ExitStatus::done, "", ""}));
  EXPECT_EQ(write({}, true), (Outcome{ExitStatus::done, "{\n  \"results\": []\n}\n", ""}));
  EXPECT_EQ(transcript(), (Lines{"open", "> ff 03 02 +61", "close",  //
                                 "open", "> ff 03 02 +61", "close"}));
}

TEST_F(ValueWriter, AMenuThatCannotBeReadIsThrown) {
  change([](SimulatedBehaviour& behaviour) { behaviour.silent = true; });
  EXPECT_THROW(write({{P::forceFeedback, 80}}), FanatecError);
}

TEST_F(ValueWriter, CountsWhatFailed) {
  base();
  EXPECT_EQ(write({{P::forceFeedback, 101}, {P::naturalFriction, 20}, {P::sensitivity, 1}}).err,
            "2 of 3 values not written\n");
}

}  // namespace
}  // namespace quorvane
