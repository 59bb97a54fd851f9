#include "cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/completion.h"
#include "cli/json_output.h"
#include "cli/parsed_command.h"
#include "cli/preset_command_line.h"
#include "cli/word_parser.h"
#include "protocol/error.h"
#include "simulator/simulate_option.h"
#include "simulator/simulated_machine.h"
#include "support/printing.h"
#include "support/text.h"
#include "support/version.h"

namespace quorvane {
namespace {

constexpr const char* description =
    "Reads and tunes a Fanatec wheel base.\n"
    "Values are written one at a time, each with a read-back check.";

constexpr const char* footer =
    "Examples:\n"
    "  quorvanectl read\n"
    "  quorvanectl set SEN=900 FF=80 BLI=OFF\n"
    "  quorvanectl presets apply \"Fanatec factory defaults\"\n"
    "  quorvanectl --simulate read --json\n\n"
    "Exit status: 0 done, 1 the device or the operation failed, 2 wrong usage.";

// The words of one command, as CLI11 fills them in.
struct Words {
  GlobalOptions options;
  std::string simulate;
  std::optional<std::string> simulateState;
  std::string layout;
  std::string reportID;
  std::vector<std::string> assignments;
  std::vector<std::string> bytes;
  std::int64_t set = 0;
  std::int64_t degrees = 0;
  std::string mode;
  std::string report;
  bool yes = false;
};

void addGlobalOptions(CLI::App& app, Words& words) {
  app.add_option("--device", words.options.device,
                 "Use the base with this id, /dev/hidraw path or serial number (default: the "
                 "first one found)")
      ->type_name("WHICH");
  app.add_option(
         "--simulate", words.simulate,
         "Use a simulated base; =PRODUCT is a hexadecimal product ID or a part of a name, and "
         "commas between several make several bases")
      ->type_name("[=PRODUCT]");
  app.add_option("--simulate-state", words.simulateState,
                 "Keep what the simulated base is set to in this file, for later runs")
      ->type_name("FILE");
  app.add_option("--report-id", words.reportID,
                 "Send short commands on this output report (default: from the base's descriptor)")
      ->type_name("N");
  app.add_option("--layout", words.layout, "Layout of menu writes (default: sdk)")
      ->type_name("sdk|linux")
      ->check(CLI::IsMember({"sdk", "linux"}).description(""));
  app.add_flag("--json", words.options.json, "Print one JSON document instead of text");
  app.set_version_flag("--version", fmt::format("quorvanectl {} ({})", version(), commit()));
}

ParsedCommands addCommands(CLI::App& app, Words& words) {
  ParsedCommands commands;
  const auto add = [&](const char* name, const char* help, auto run) {
    CLI::App* const parser = app.add_subcommand(name, help);
    commands.push_back({parser, std::move(run)});
    return parser;
  };

  add("devices", "List the attached bases and whether you may open them", devicesCommand);
  add("read", "Show who the base is and the tuning menu of its active set", readCommand);
  add("set", "Write values into the active set, one at a time, each read back",
      [&words](const auto& context) { return setCommand(context, words.assignments); })
      ->footer(
          "Codes are those of the base's own display (quorvanectl read lists them).\n"
          "Words work as values too: SEN=AUTO BLI=OFF FFS=PEA ACP=CbP.\n"
          "Ctrl-C finishes the value in flight.")
      ->add_option("values", words.assignments, "What to write, such as SEN=900 FF=80")
      ->type_name("CODE=VALUE")
      ->required();
  add("select", "Make another tuning set active",
      [&words](const auto& context) { return selectCommand(context, words.set); })
      ->add_option("set", words.set, "The set's number, 1 to 5")
      ->type_name("SET")
      ->required();
  add("mode", "Show the menu's mode, or switch to one",
      [&words](const auto& context) {
        return modeCommand(
            context, words.mode.empty() ? std::nullopt : std::optional<std::string>(words.mode));
      })
      ->add_option("mode", words.mode, "The mode to switch to; nothing is sent when already there")
      ->type_name("standard|advanced")
      ->check(CLI::IsMember({"standard", "advanced"}).description(""));
  add("rotation", "Set the steering angle directly, without touching the menu",
      [&words](const auto& context) { return rotationCommand(context, words.degrees); })
      ->add_option("degrees", words.degrees, "Degrees, from 90 to the base's largest angle")
      ->type_name("DEGREES")
      ->required();
  add("raw", "Send one packet as given",
      [&words](const auto& context) { return rawCommand(context, words.bytes); })
      ->add_option("bytes", words.bytes, "Hexadecimal bytes, the report ID first: ff 03 02")
      ->type_name("BYTES")
      ->required();
  add("factory-reset", "Set every tuning set back to defaults", [&words](const auto& context) {
    return factoryResetCommand(context, words.yes);
  })->add_flag("--yes", words.yes, "Yes, reset all sets; this cannot be undone");
  add("usb-reset", "Re-enumerate the base as if its cable were unplugged and plugged back in",
      usbResetCommand);
  add("monitor", "Print a line for each arrival, removal and changed value until Ctrl-C",
      monitorCommand);
  add("doctor", "Find out why a base is not found or does not answer",
      [&words](const auto& context) { return doctorCommand(context, words.report); })
      ->footer(
          "Goes through everything from the USB bus to the base's menu, and says what to do next.\n"
          "Nothing is changed. Exit status 0 when all is well.\n\n"
          "Examples:\n"
          "  quorvanectl doctor\n"
          "  quorvanectl doctor --report quorvane-report.txt")
      ->add_option("--report", words.report,
                   "Write what a bug report needs to this file as well; \"-\" is standard output")
      ->type_name("FILE");
  add("udev-rule", "Print the udev rule that lets you use the base without being root",
      udevRuleCommand)
      ->footer(
          "Install it:\n"
          "  quorvanectl udev-rule | sudo tee /etc/udev/rules.d/70-quorvane.rules\n"
          "  sudo udevadm control --reload && sudo udevadm trigger");
  addPresetCommands(app, commands);
  return commands;
}

std::optional<std::uint8_t> parseReportID(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const bool hex = text.size() > 2 && lowerCase(text.substr(0, 2)) == "0x";
  std::optional<std::int64_t> number = hex ? std::nullopt : parseInteger(text);
  if (hex) {
    if (const auto value = parseHexNumber(text)) number = *value;
  }
  if (!number || *number < 0 || *number > 0xFF) {
    throw UsageError(
        fmt::format("\"{}\" is no report ID: give 0 to 255, or 0x00 to 0xff", oneLine(text)));
  }
  return static_cast<std::uint8_t>(*number);
}

// None when no base is simulated.
std::vector<FanatecProduct> simulatedProducts(const Words& words) {
  try {
    const bool isSimulating = !words.simulate.empty();
    if (words.simulateState) requireBasesForState(*words.simulateState, isSimulating);
    if (!isSimulating) return {};
    return productsToSimulate(words.simulate);
  } catch (const std::invalid_argument& error) {
    throw UsageError(error.what());
  }
}

void keepState(SimulatedMachine& machine, const std::string& file, const World& world) {
  machine.keepStateIn(file, [err = world.err](const std::string& reason) {
    printTo(err, "The simulated base's state was not kept: {}\n", oneLine(reason));
  });
}

// Runs the command, on a simulated base when one is asked for.
ExitStatus run(const ParsedCommand& command, Words& words, const World& world) {
  words.options.reportID = parseReportID(words.reportID);
  words.options.layout = tuningLayout(words.layout);
  const std::vector<FanatecProduct> products = simulatedProducts(words);
  if (products.empty()) return command.run({world, words.options});

  SimulatedMachine machine(products);
  if (words.simulateState) keepState(machine, *words.simulateState, world);
  for (std::size_t number = 0; number < products.size(); ++number) {
    printTo(world.err, "Simulated base: {}\n", products[number].name);
    if (!words.options.layout) continue;
    // Its firmware speaks the layout asked for.
    machine.device(number).withBase(
        [&](SimulatedBase& base) { base.behaviour().layout = *words.options.layout; });
  }
  const World simulated{world.out,   world.err,          machine.backend(),      machine.usb(),
                        world.clock, world.interruption, world.simulatedPresets, machine.survey()};
  return command.run({simulated, words.options});
}

ExitStatus reportFailure(const World& world, const GlobalOptions& options,
                         const std::exception& failure) {
  if (options.json) printJson(world, errorJson(failure));
  printTo(world.err, "{}\n", oneLine(failure.what()));
  if (const auto step = nextStep(failure, options)) printTo(world.err, "{}\n", *step);
  return ExitStatus::failed;
}

ExitStatus runReporting(const ParsedCommand& command, Words& words, const World& world) {
  try {
    return run(command, words, world);
  } catch (const UsageError& error) {
    printTo(world.err, "{}\n", error.what());
    return ExitStatus::wrongUsage;
  } catch (const FanatecError& error) {
    return reportFailure(world, words.options, error);
  } catch (const std::runtime_error& error) {  // FileError, DecodingError, std::system_error
    return reportFailure(world, words.options, error);
  }
}

// The command that the words got to.
const CLI::App& reachedCommand(const CLI::App& app) {
  const auto parsed = app.get_subcommands();
  return parsed.empty() ? app : reachedCommand(*parsed.front());
}

std::string namesOf(const std::vector<const CLI::App*>& commands) {
  std::string names;
  for (const CLI::App* const command : commands) {
    names += (names.empty() ? "" : ", ") + command->get_name();
  }
  return names;
}

// What is wrong with words that stop short of a command. CLI11 would only say that one is missing.
std::optional<std::string> missingCommand(const CLI::App& app, const CLI::ParseError& error) {
  const CLI::App& reached = reachedCommand(app);
  const auto commands = reached.get_subcommands({});
  if (error.get_exit_code() == 0 || commands.empty()) return std::nullopt;

  const std::vector<std::string> unknown = app.remaining();
  const std::string group = &reached == &app ? "" : reached.get_name();
  const bool isMissing = error.get_name() == "RequiredError";
  std::string text;
  if (!unknown.empty()) {
    text = fmt::format("There is no command or option \"{}{}\"\n", group.empty() ? "" : group + " ",
                       oneLine(asTyped(unknown.front())));
  }
  if (!group.empty() && isMissing) {
    text += fmt::format("{} takes one of: {}\n", group, namesOf(commands));
  }
  if (text.empty()) return std::nullopt;
  return text;
}

// What CLI11 has to say about the words: the help, the version, or what is wrong with them.
ExitStatus explain(const CLI::App& app, const CLI::ParseError& error, const World& world) {
  if (const auto missing = missingCommand(app, error)) {
    printTo(world.err, "{}Run with --help for more information.\n", *missing);
    return ExitStatus::wrongUsage;
  }
  if (error.get_exit_code() != 0) {
    printTo(world.err, "{}\nRun with --help for more information.\n",
            oneLine(asTyped(error.what())));
    return ExitStatus::wrongUsage;
  }
  std::ostringstream out;
  app.exit(error, out, out);
  printLinesTo(world.out, out.str());
  return ExitStatus::done;
}

// One command line: its parser, and what the parser found in the words.
class CommandLine {
 public:
  CommandLine() {
    app_.footer(footer);
    app_.require_subcommand(1);
    app_.fallthrough();
    app_.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    addGlobalOptions(app_, parsed_);
    commands_ = addCommands(app_, parsed_);
  }

  // None when there is a command to run.
  std::optional<ExitStatus> read(const std::vector<std::string>& words, const World& world) {
    if (!words.empty() && words.front() == completionWord) {
      return printCompletions(app_, {words.begin() + 1, words.end()}, world);
    }
    try {
      parseWords(app_, withSimulatedProduct(words));
    } catch (const CLI::ParseError& error) {
      return explain(app_, error, world);
    }
    return std::nullopt;
  }

  ExitStatus run(const World& world) {
    const auto chosen =
        std::find_if(commands_.begin(), commands_.end(),
                     [](const ParsedCommand& command) { return command.parser->parsed(); });
    return runReporting(*chosen, parsed_, world);
  }

 private:
  CLI::App app_{description, "quorvanectl"};
  Words parsed_;
  ParsedCommands commands_;
};

}  // namespace

ExitStatus runCommandLine(const std::vector<std::string>& words, const World& world) {
  CommandLine line;
  const auto status = line.read(words, world);
  return status ? *status : line.run(world);
}

std::optional<ExitStatus> readCommandLine(const std::vector<std::string>& words,
                                          const World& world) {
  return CommandLine().read(words, world);
}

}  // namespace quorvane
