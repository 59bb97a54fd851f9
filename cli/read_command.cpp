#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "protocol/error.h"
#include "protocol/menu_text.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// None if the base does not answer: the menu is printed without the identity.
std::optional<IdentityReport> identityOf(WheelBase& base) {
  try {
    return base.fetchIdentity(WheelBase::readTimeout);
  } catch (const FanatecError&) {
    return std::nullopt;
  }
}

void printHeading(const World& world, const WheelBase& base,
                  const std::optional<IdentityReport>& identity, const TuningSnapshot& snapshot) {
  printTo(world.out, "{}\n", oneLine(identity ? identity->baseName() : base.info().displayName()));
  if (identity) {
    printTo(world.out, "  Steering wheel  {}\n", identity->wheelName());
    printTo(world.out, "  Button module   {}\n", identity->moduleName());
  }
  printTo(world.out, "  Menu            {}, set {}\n\n", snapshot.modeName(), snapshot.setName());
}

void printValues(const World& world, const WheelBase& base, const TuningSnapshot& snapshot) {
  for (const TuningParameter parameter : TuningParameter::adjustable(base.product())) {
    const std::int64_t value = snapshot.value(parameter, base.product());
    printTo(world.out, "  {:<4} {:<24} {}\n", parameter.code(),
            MenuText::text(parameter, value, base.product()), parameter.title());
  }
}

}  // namespace

ExitStatus readCommand(const CommandContext& context) {
  const OpenBase base(context);
  const TuningSnapshot snapshot = base->fetchTuning(WheelBase::readTimeout);
  const auto identity = identityOf(*base);
  if (context.options.json) {
    printJson(context.world, {{"device", deviceJson(base->info())},
                              {"identity", identityJson(identity)},
                              {"tuning", tuningJson(snapshot, base->product())}});
  } else {
    printHeading(context.world, *base, identity, snapshot);
    printValues(context.world, *base, snapshot);
  }
  return ExitStatus::done;
}

}  // namespace quorvane
