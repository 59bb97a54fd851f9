#include <fmt/format.h>

#include <chrono>
#include <variant>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/event_queue.h"
#include "cli/json_output.h"
#include "cli/recording.h"
#include "hid/device_watcher.h"
#include "history/wheel_changes.h"
#include "protocol/error.h"
#include "protocol/menu_text.h"
#include "session/candidates.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// A report with the number of the base that sent it, to discard reports that arrive after that base
// was unplugged.
template <typename Report>
struct FromBase {
  int number = 0;
  Report report;
};

// Events from other threads.
using Event =
    std::variant<std::vector<HIDDeviceInfo>, FromBase<TuningSnapshot>, FromBase<WheelStatus>>;

// Prints the changes in device lists and reports. Changes of values go into the history: when they
// are gathered, and at the end. Not thread-safe.
class Monitor {
 public:
  explicit Monitor(const CommandContext& context, EventQueue<Event>& events)
      : context_(context), events_(events) {}
  ~Monitor() { drop(); }
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  void operator()(const std::vector<HIDDeviceInfo>& devices) {
    std::vector<HIDDeviceInfo> bases = wheelBaseCandidates(devices, context_.options.device);
    for (const HIDDeviceInfo& base : missingFrom(bases, present_)) announce("removal", base);
    if (base_ && !findDevice(bases, base_->info())) drop();
    for (const HIDDeviceInfo& base : missingFrom(present_, bases)) announce("arrival", base);
    present_ = std::move(bases);
    if (!base_ && !present_.empty()) follow(present_.front());
  }

  void operator()(const FromBase<TuningSnapshot>& event) {
    if (!base_ || event.number != number_) return;
    const TuningSnapshot& snapshot = event.report;
    if (before_) {
      if (snapshot.slot() != before_->slot()) {
        print({{"event", "set"}, {"value", snapshot.slot()}},
              fmt::format("set {}", snapshot.setName()));
      }
      if (snapshot.isAdvancedMode() != before_->isAdvancedMode()) {
        print({{"event", "mode"}, {"value", snapshot.modeName()}},
              fmt::format("mode {}", snapshot.modeName()));
      }
      printChangedValues(*before_, snapshot);
      gather(*before_, snapshot);
    }
    before_ = snapshot;
  }

  void operator()(const FromBase<WheelStatus>& event) {
    if (!base_ || event.number != number_) return;
    const WheelStatus status = event.report;
    print({{"event", "wheel"},
           {"wheelID", status.wheelID},
           {"firmwareVersion", status.firmwareVersion}},
          fmt::format("wheel {}, firmware {}", status.wheelID, status.firmwareVersion));
  }

  // Records the changes that have been gathered until now.
  void record() {
    if (const auto gathered = changes_.take()) record(*gathered);
  }

 private:
  static std::vector<HIDDeviceInfo> missingFrom(const std::vector<HIDDeviceInfo>& list,
                                                std::vector<HIDDeviceInfo> devices) {
    std::erase_if(
        devices, [&](const HIDDeviceInfo& device) { return findDevice(list, device).has_value(); });
    return devices;
  }

  void announce(const char* event, const HIDDeviceInfo& base) {
    print({{"event", event}, {"device", deviceJson(base)}},
          fmt::format("{} {} {}", event, oneLine(base.displayName()),
                      oneLine(base.device->node().empty() ? base.id : base.device->node())));
  }

  void printChangedValues(const TuningSnapshot& before, const TuningSnapshot& now) {
    for (const TuningParameter parameter : TuningParameter::adjustable(base_->product())) {
      if (now.rawValue(parameter) == before.rawValue(parameter)) continue;
      const std::int64_t value = now.value(parameter, base_->product());
      print({{"event", "value"},
             {"parameter", parameter.code()},
             {"value", value},
             {"previous", before.value(parameter, base_->product())}},
            fmt::format("{} {}", parameter.code(),
                        MenuText::text(parameter, value, base_->product())));
    }
  }

  void gather(const TuningSnapshot& before, const TuningSnapshot& now) {
    if (before.raw() == now.raw()) return;
    const auto ended = changes_.add(before, now, context_.world.clock.now());
    if (ended) record(*ended);
  }

  void record(const WheelChanges::Gathered& gathered) {
    try {
      context_.world.history.addWheelChanges(base_->info(), gathered.before, gathered.after);
    } catch (const FileError& error) {
      printNotRecorded(context_.world, error.what());
    }
  }

  // Opens the base and requests its menu; later menus are compared with the first answer. The low
  // latency scope makes changes arrive without batching.
  void follow(const HIDDeviceInfo& device) {
    auto base = WheelBase::create(device, context_.world.clock);
    ++number_;
    base->setOnTuningUpdate([this, number = number_](const TuningSnapshot& snapshot) {
      events_.push(FromBase<TuningSnapshot>{number, snapshot});
    });
    base->setOnStatusUpdate([this, number = number_](WheelBase& changed) {
      events_.push(FromBase<WheelStatus>{
          number, {changed.wheelID().value_or(0), changed.firmwareVersion().value_or(0)}});
    });
    try {
      auto scope = base->connection().lowLatencyScope();
      base->connect(WheelBase::Use::reading);
      base->sendRaw(FanatecCommands::requestTuningSnapshot());
      base_ = std::move(base);
      scope_ = std::move(scope);
    } catch (const FanatecError& error) {
      closeBase(*base);
      if (context_.options.json) {
        Json document{{"event", "error"}};
        document.update(errorJson(error));
        printJsonLine(context_.world, document);
      }
      printTo(context_.world.err, "{}\n", oneLine(error.errorDescription()));
      if (isPermissionFailure(error)) printTo(context_.world.err, "{}\n", permissionHint);
    }
  }

  void drop() {
    record();
    if (base_) closeBase(*base_);
    base_.reset();
    scope_.reset();
    before_.reset();
  }

  void print(const Json& document, const std::string& line) {
    if (context_.options.json) {
      printJsonLine(context_.world, document);
    } else {
      printTo(context_.world.out, "{}\n", line);
      flush(context_.world.out);
    }
  }

  const CommandContext& context_;
  EventQueue<Event>& events_;
  std::vector<HIDDeviceInfo> present_;
  std::shared_ptr<WheelBase> base_;
  std::optional<HIDConnection::LowLatencyScope> scope_;  // of its connection
  int number_ = 0;                                       // of the base followed last
  std::optional<TuningSnapshot> before_;
  WheelChanges changes_;  // of the base
};

void sayWaiting(const CommandContext& context) {
  const std::string& which = context.options.device;
  const std::string none =
      which.empty() ? "No base found" : fmt::format("No base answers to \"{}\"", oneLine(which));
  printTo(context.world.err, "{}; waiting for one. Ctrl-C ends this.\n", none);
  flush(context.world.err);
}

}  // namespace

ExitStatus monitorCommand(const CommandContext& context) {
  const Interruption interruption = context.world.interruption();
  EventQueue<Event> events;
  Monitor monitor(context, events);
  HIDDeviceWatcher watcher(Fanatec::vendorID, context.world.backend);
  watcher.setOnChange(
      [&events](const std::vector<HIDDeviceInfo>& devices) { events.push(devices); });
  if (namedBases(context).empty()) sayWaiting(context);
  watcher.start();
  constexpr auto quiet =
      std::chrono::duration_cast<std::chrono::milliseconds>(WheelChanges::period);
  const auto record = [&monitor] { monitor.record(); };
  while (const auto event = events.next(interruption.fd(), quiet, record)) {
    std::visit(monitor, *event);
    // The reader of the output is gone, such as after a closed pipe.
    if (std::ferror(context.world.out) != 0) return ExitStatus::failed;
  }
  return ExitStatus::done;
}

}  // namespace quorvane
