// The application model without a window, with the bases of this machine or a simulated one
// (--simulate). Runs actions given on standard input, one per line:
//
//   refresh | save | discard | toggle | factory-reset | usb-reset | quit
//   stage CODE=VALUE[,CODE=VALUE...] | select SET | apply PRESET | capture NAME | import FILE |
//   show
//
// `show` prints the model's state as one JSON line. The log goes to standard error if the
// environment says so. End of input quits.

#include <QCoreApplication>
#include <cstdio>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "app/app_model.h"
#include "simulator/simulated_machine.h"
#include "support/standard_streams.h"
#include "support/text.h"
#include "tests/app/no_panels.h"
#include "tests/windowless/line_input.h"

namespace quorvane {
namespace {

nlohmann::ordered_json valuesJson(const StagedValues& values) {
  nlohmann::ordered_json json = nlohmann::ordered_json::object();
  for (const auto& [parameter, value] : values) json[std::string(parameter.code())] = value;
  return json;
}

void show(const AppModel& model) {
  nlohmann::ordered_json json{{"status", model.statusLine()},
                              {"busy", model.busy()},
                              {"devices", model.devices().size()},
                              {"connected", model.connectedName().value_or("")},
                              {"identity", model.identity().has_value()},
                              {"staged", valuesJson(model.staged())},
                              {"presets", model.userPresets().size()}};
  if (model.tuning()) {
    StagedValues menu;
    for (const TuningParameter parameter : TuningParameter::available(model.product())) {
      menu[parameter] = model.tuning()->value(parameter, model.product());
    }
    json["tuning"] = valuesJson(menu);
  }
  std::printf("%s\n", json.dump().c_str());
  std::fflush(stdout);
}

void applyNamed(AppModel& model, const std::string& name) {
  auto presets = TuningPreset::builtIn();
  presets.insert(presets.end(), model.userPresets().begin(), model.userPresets().end());
  for (const TuningPreset& preset : presets) {
    if (preset.name == name) model.apply(preset);
  }
}

using Action = std::function<void(AppModel&, const std::string& words)>;

const std::map<std::string, Action, std::less<>>& actions() {
  static const std::map<std::string, Action, std::less<>> table{
      {"refresh", [](AppModel& model, const auto&) { model.refresh(); }},
      {"save", [](AppModel& model, const auto&) { model.saveStaged(); }},
      {"discard", [](AppModel& model, const auto&) { model.discardStaged(); }},
      {"toggle", [](AppModel& model, const auto&) { model.toggleMode(); }},
      {"factory-reset", [](AppModel& model, const auto&) { model.factoryReset(); }},
      {"usb-reset", [](AppModel& model, const auto&) { model.usbReset(); }},
      {"stage",
       [](AppModel& model, const auto& words) {
         for (const auto& [parameter, value] : parseDemoStage(words)) model.stage(parameter, value);
       }},
      {"select",
       [](AppModel& model, const auto& words) {
         if (const auto set = parseInteger(words)) model.selectSlot(*set);
       }},
      {"apply", applyNamed},
      {"capture", [](AppModel& model, const auto& words) { model.saveCurrentAsPreset(words); }},
      {"import", [](AppModel& model, const auto& words) { model.importSettings(words); }},
      {"show", [](AppModel& model, const auto&) { show(model); }},
      {"quit", [](AppModel&, const auto&) { QCoreApplication::quit(); }},
  };
  return table;
}

void carryOut(AppModel& model, const std::string& line) {
  const std::size_t end = line.find(' ');
  const auto action = actions().find(line.substr(0, end));
  if (action == actions().end()) {
    std::fprintf(stderr, "no action: %s\n", line.c_str());
    return;
  }
  action->second(model, end == std::string::npos ? "" : line.substr(end + 1));
}

int run(const AppModel::World& world) {
  AppModel model(world);
  const LineInput input([&](const std::string& line) { carryOut(model, line); });
  return QCoreApplication::exec();
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  prepareStandardStreams();
  const QCoreApplication application(argc, argv);
  NoPanels panels;
  if (argc < 2 || std::string_view(argv[1]) != "--simulate") return run({{}, panels});

  SimulatedMachine machine(FanatecProduct::lookup(defaultSimulatedProduct).value());
  return run({machine.platform(), panels});
}
