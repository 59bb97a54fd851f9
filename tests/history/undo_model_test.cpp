#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <utility>

#include "history/history.h"
#include "history/undo_plan.h"
#include "session/receipt_writer.h"
#include "tests/session/simulated_session.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using Menu = std::map<P, std::int64_t>;

constexpr std::array parameters{P::forceFeedback, P::naturalDamper, P::naturalFriction};
constexpr std::int64_t steps = 4;  // few values, so that some return by chance

// One own write as the model knows it.
struct OwnWrite {
  Menu before;
  Menu after;
};

// Random writes, undos, wheel turns and writes of another program, with what must come of them: a
// value is only undone while it is what was written.
class UndoModel : public SimulatedSession {
 public:
  explicit UndoModel(unsigned seed) : random_(seed) {
    connectAndRead();
    menu_ = valuesOnBase();
  }

  void step() {
    switch (number(6)) {
      case 0:
      case 1:
        write();
        break;
      case 2:
      case 3:
        reverse(UndoDirection::undo, done_, undone_);
        break;
      case 4:
        reverse(UndoDirection::redo, undone_, done_);
        break;
      default:
        number(2) == 0 ? turn() : writeElsewhere();
        break;
    }
    ASSERT_EQ(valuesOnBase(), menu_);
  }

 private:
  std::int64_t number(std::int64_t below) {
    return std::uniform_int_distribution<std::int64_t>(0, below - 1)(random_);
  }

  P anyParameter() { return parameters.at(static_cast<std::size_t>(number(parameters.size()))); }

  Menu valuesOnBase() {
    const auto menu = TuningSnapshot::fromReport(menuReport(), {}).value();
    Menu values;
    for (const P parameter : parameters) {
      values[parameter] = menu.value(parameter, base->product());
    }
    return values;
  }

  void write() {
    std::vector<ParameterValue> values;
    for (const P parameter : parameters) {
      if (number(2) == 0) values.push_back({parameter, number(steps)});
    }
    const Menu before = menu_;
    record({HistoryAction::save, values});
    for (const auto& [parameter, value] : values) menu_[parameter] = value;
    if (menu_ == before) return;
    done_.push_back({before, menu_});
    undone_.clear();
  }

  void record(const HistoryIntent& intent) {
    HistoryBatch batch = history_.begin(*base, intent);
    ReceiptWriter writer(*base, base->tuning(), clock);
    std::vector<ValueReceipt> receipts;
    for (const auto& [parameter, value] : intent.wanted) {
      receipts.push_back(writer.write(parameter, value));
    }
    batch.end(receipts);
    ASSERT_EQ(batch.failure(), std::nullopt);
  }

  void reverse(UndoDirection direction, std::vector<OwnWrite>& from, std::vector<OwnWrite>& to) {
    const auto target = nextToReverse(history_.read(base->info()).records, direction);
    ASSERT_EQ(target.has_value(), !from.empty());
    if (!target) return;
    const bool isUndo = direction == UndoDirection::undo;
    const TuningSnapshot menu = base->fetchTuning(WheelBase::readTimeout);
    record({isUndo ? HistoryAction::undo : HistoryAction::redo,
            undoPlan(*target, direction, menu).writes,
            {},
            target->id});
    const OwnWrite& expected = from.back();
    const Menu& present = isUndo ? expected.after : expected.before;
    const Menu& wanted = isUndo ? expected.before : expected.after;
    for (auto& [parameter, value] : menu_) {
      if (value == present.at(parameter)) value = wanted.at(parameter);
    }
    to.push_back(expected);
    from.pop_back();
  }

  void turn() {
    const P parameter = anyParameter();
    menu_[parameter] = number(steps);
    device->turn(parameter, menu_[parameter]);
    device->waitUntilQuiet();
  }

  void writeElsewhere() {
    const P parameter = anyParameter();
    menu_[parameter] = number(steps);
    const auto other = WheelBase::create(HIDEnumerator::info(device), clock);
    other->connect();
    other->fetchTuning(WheelBase::readTimeout);
    other->set(parameter, menu_[parameter], number(2) == 0);
    other->disconnect();
    other->connection().join();
  }

  std::mt19937 random_;
  TemporaryDirectory directory_;
  const History history_{directory_.path(), "test"};
  Menu menu_;
  std::vector<OwnWrite> done_;
  std::vector<OwnWrite> undone_;
};

TEST(UndoModelTest, UndoGoesBackOverOwnWritesAndOverwritesNothingElse) {
  for (unsigned seed = 0; seed < 10; ++seed) {
    SCOPED_TRACE(seed);
    UndoModel model(seed);
    for (int i = 0; i < 40 && !testing::Test::HasFailure(); ++i) model.step();
  }
}

TEST(UndoModelTest, AfterAsManyUndosTheMenuIsAsBeforeTheOldestOfThem) {
  SimulatedSession session;
  session.connectAndRead();
  TemporaryDirectory directory;
  const History history(directory.path(), "test");
  WheelBase& base = *session.base;
  const auto write = [&](const HistoryIntent& intent) {
    HistoryBatch batch = history.begin(base, intent);
    ReceiptWriter writer(base, base.tuning(), session.clock);
    std::vector<ValueReceipt> receipts;
    for (const auto& [parameter, value] : intent.wanted) {
      receipts.push_back(writer.write(parameter, value));
    }
    batch.end(receipts);
  };
  std::vector<Bytes> menus;
  for (const std::int64_t value : {70, 75, 80}) {
    menus.push_back(session.menuReport());
    write({HistoryAction::set, {{P::forceFeedback, value}, {P::naturalDamper, value - 20}}});
  }
  for (; !menus.empty(); menus.pop_back()) {
    const auto record =
        nextToReverse(history.read(base.info()).records, UndoDirection::undo).value();
    write({HistoryAction::undo,
           undoPlan(record, UndoDirection::undo, base.tuning().value()).writes,
           {},
           record.id});
    EXPECT_EQ(session.menuReport(), menus.back());
  }
}

}  // namespace
}  // namespace quorvane
