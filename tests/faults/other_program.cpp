#include "tests/faults/other_program.h"

#include "protocol/commands.h"

namespace quorvane {

void OtherProgram::write(const TuningSnapshot& menu, const ParameterValue& what) {
  const auto& [parameter, value] = what;
  const auto product = FanatecProduct::lookup(connection_.info().productID);
  connection_.send(FanatecCommands::writeTuning(menu, parameter, parameter.encode(value, product),
                                                TuningLayout::deviceID, true));
}

void OtherProgram::selectSet(std::int64_t slot) {
  connection_.send(FanatecCommands::selectTuningSlot(slot, TuningLayout::inPlace));
}

void OtherProgram::leave() {
  connection_.close();
  connection_.join();
}

}  // namespace quorvane
