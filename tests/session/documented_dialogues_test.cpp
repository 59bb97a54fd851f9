#include <gtest/gtest.h>

#include "tests/protocol_document.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

using DocumentedDialogues = SimulatedSessionTest;
using ProtocolDocument::block;

TEST_F(DocumentedDialogues, ReadABase) {
  connect();
  base->fetchIdentity(WheelBase::readTimeout);
  base->fetchTuning(WheelBase::readTimeout);
  EXPECT_EQ(takeTranscript(), block("Reading a base"));
}

TEST_F(DocumentedDialogues, AnswerWithTheDocumentedReports) {
  connect();
  EXPECT_EQ(base->fetchIdentity(WheelBase::readTimeout).hexDump(),
            block("Identity report").front());
  EXPECT_EQ(base->fetchTuning(WheelBase::readTimeout).hexDump(), block("Tuning report").front());
}

TEST_F(DocumentedDialogues, WriteAValue) {
  connectAndRead();
  base->set(TuningParameter::forceFeedback, 80, true);
  EXPECT_EQ(takeTranscript(), block("A verified write"));
}

TEST_F(DocumentedDialogues, WriteAValueWithAcknowledgement) {
  connectAndRead();
  base->sendAckBurstAfterWrite = true;
  base->set(TuningParameter::forceFeedback, 80, true);
  EXPECT_EQ(takeTranscript(), block("A write with acknowledgement"));
}

TEST_F(DocumentedDialogues, SelectASet) {
  connect();
  base->selectSlot(3, TuningLayout::inPlace);
  EXPECT_EQ(takeTranscript(), block("Selecting a set"));
}

TEST_F(DocumentedDialogues, SwitchTheMode) {
  connect();
  base->switchMenuMode();
  EXPECT_EQ(takeTranscript(), block("Switching the mode"));
}

TEST_F(DocumentedDialogues, Reset) {
  connect();
  base->factoryReset();
  EXPECT_EQ(takeTranscript(), block("Factory reset"));
}

TEST_F(DocumentedDialogues, SetTheSteeringAngle) {
  connect();
  base->setRotation(540);
  EXPECT_EQ(takeTranscript(), block("Steering angle"));
}

// The pauses are in the dialogues as well; the limit is only in the table.
TEST_F(DocumentedDialogues, WaitAsLongAsTheTableSays) {
  using Cells = ProtocolDocument::Cells;
  EXPECT_EQ(ProtocolDocument::table("Dialogues", "pause or limit"),
            (std::vector<Cells>{{"between a write and its read-back", "250 ms"},
                                {"after selecting a set", "150 ms"},
                                {"after toggling the mode, after a reset", "400 ms"},
                                {"after each acknowledge packet", "2 ms"},
                                {"waiting for an answer", "2 s"}}));
  EXPECT_EQ(WheelBase::readTimeout, Seconds{2});
}

}  // namespace
}  // namespace quorvane
