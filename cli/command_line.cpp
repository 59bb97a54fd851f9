#include "cli/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>
#include <stdexcept>

#include "cli/base_access.h"
#include "cli/base_command_line.h"
#include "cli/completion.h"
#include "cli/help_command.h"
#include "cli/json_output.h"
#include "cli/parsed_command.h"
#include "cli/preset_command_line.h"
#include "cli/usage_errors.h"
#include "cli/usage_line.h"
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
    "Exit status: 0 done, 1 the device or the operation failed, 2 wrong usage, 130 interrupted.";

// The values of the global options, filled in by CLI11.
struct Words {
  GlobalOptions options;
  std::string simulate;
  std::optional<std::string> simulateState;
  std::string layout;
  std::string reportID;
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
      ->type_name("sdk|linux");
  app.add_flag("--json", words.options.json, "Print one JSON document instead of text");
  app.set_version_flag("--version", fmt::format("quorvanectl {} ({})", version(), commit()));
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

std::optional<TuningLayout> parseLayout(const std::string& text) {
  const auto layout = tuningLayout(text);
  if (layout || text.empty()) return layout;
  throw UsageError(fmt::format("There is no layout \"{}\": give sdk or linux", oneLine(text)));
}

// Empty without --simulate.
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

// Runs the command, with --simulate on simulated bases.
ExitStatus run(const ParsedCommand& command, Words& words, const World& world) {
  words.options.reportID = parseReportID(words.reportID);
  words.options.layout = parseLayout(words.layout);
  const std::vector<FanatecProduct> products = simulatedProducts(words);
  if (products.empty()) return command.run({world, words.options});

  SimulatedMachine machine(products);
  if (words.simulateState) keepState(machine, *words.simulateState, world);
  for (std::size_t number = 0; number < products.size(); ++number) {
    printTo(world.err, "Simulated base: {}\n", products[number].name);
    if (!words.options.layout) continue;
    // Simulates firmware with the requested layout.
    machine.device(number).withBase(
        [&](SimulatedBase& base) { base.behaviour().layout = *words.options.layout; });
  }
  const World simulated{machine.platform(world.clock),
                        world.out,
                        world.err,
                        world.interruption,
                        world.simulatedPresets,
                        world.simulatedPresets,
                        {},
                        world.simulatedHistory,
                        world.simulatedHistory};
  return command.run({simulated, words.options});
}

void reportFailure(const World& world, const GlobalOptions& options,
                   const std::exception& failure) {
  if (options.json) printJson(world, errorJson(failure));
  printTo(world.err, "{}\n", oneLine(failure.what()));
  if (const auto step = nextStep(failure, options)) printTo(world.err, "{}\n", *step);
}

// Runs the command and prints its errors.
ExitStatus runReporting(const ParsedCommand& command, Words& words,
                        const std::vector<std::string>& line, const World& world) {
  try {
    return run(command, words, world);
  } catch (const UsageError& error) {
    return reportWrongUsage(world, words.options.json || asksForJson(line),
                            explainRefusal(*command.parser, error, line));
  } catch (const FanatecError& error) {
    reportFailure(world, words.options, error);
  } catch (const std::runtime_error& error) {  // CommandError, FileError, std::system_error, ...
    reportFailure(world, words.options, error);
  }
  return command.whenFailed;
}

ExitStatus printVersion(const World& world, bool json) {
  if (json) {
    printJson(world, {{"name", "quorvanectl"}, {"version", version()}, {"commit", commit()}});
  } else {
    printTo(world.out, "quorvanectl {} ({})\n", version(), commit());
  }
  return ExitStatus::done;
}

// Handles the parser's exception: a request for the help or the version, or wrong words.
ExitStatus explain(const CLI::App& app, const CLI::ParseError& stop,
                   const std::vector<std::string>& words, const World& world) {
  const bool json = asksForJson(words);
  if (dynamic_cast<const CLI::CallForVersion*>(&stop) != nullptr) return printVersion(world, json);
  if (stop.get_exit_code() == 0) {
    printLinesTo(world.out, app.help());
    return ExitStatus::done;
  }
  if (words.empty()) {
    printLinesTo(world.err, app.help());
    return ExitStatus::wrongUsage;
  }
  return reportWrongUsage(world, json, explainRefusal(app, stop, words));
}

// One command line: its parser and the parsed words.
class CommandLine {
 public:
  CommandLine() {
    app_.footer(footer);
    useUsageLine(app_);
    app_.require_subcommand(1);
    app_.fallthrough();
    app_.option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    addGlobalOptions(app_, parsed_);
    addBaseCommands(app_, commands_);
    addPresetCommands(app_, commands_);
    addHelpCommand(app_, commands_);
  }

  // None when there is a command to run.
  std::optional<ExitStatus> read(const std::vector<std::string>& words, const World& world) {
    if (!words.empty() && words.front() == completionWord) {
      return printCompletions(app_, {words.begin() + 1, words.end()}, world);
    }
    words_ = words;
    try {
      parseWords(app_, withSimulatedProduct(words));
    } catch (const CLI::ParseError& stop) {
      return explain(app_, stop, words, world);
    }
    return std::nullopt;
  }

  ExitStatus run(const World& world) {
    const auto chosen =
        std::find_if(commands_.begin(), commands_.end(),
                     [](const ParsedCommand& command) { return command.parser->parsed(); });
    return runReporting(*chosen, parsed_, words_, world);
  }

 private:
  CLI::App app_{description, "quorvanectl"};
  std::vector<std::string> words_;  // as they were typed
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
