#include "cli/base_command_line.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"

namespace quorvane {
namespace {

constexpr const char* devicesFooter =
    "Examples:\n"
    "  quorvanectl devices\n"
    "  quorvanectl devices --json";

constexpr const char* readFooter =
    "Examples:\n"
    "  quorvanectl read\n"
    "  quorvanectl read --json";

constexpr const char* explainFooter =
    "What it does, what less and more feel like, its range, and what presets use. No base is "
    "needed.\n\n"
    "Examples:\n"
    "  quorvanectl explain NDP\n"
    "  quorvanectl explain NDP --json";

constexpr const char* diffFooter =
    "A SIDE is: base (the active set), preset:NAME, history:ID (the menu before a write that\n"
    "quorvanectl history lists), a settings file, FILE#NAME for one preset of a file with "
    "several,\n"
    "or - for standard input. A file may also be text as people send it, such as\n"
    "\"SEN AUTO, FF: 100, FFS peak, NDP 25%\". One side is compared with the base. Two values are\n"
    "the same when the base keeps the same for both. What a side leaves alone does not differ "
    "from\n"
    "the base.\n\n"
    "Exit status: 0 the sides are the same, 1 they differ, 2 trouble, such as no base.\n\n"
    "Examples:\n"
    "  quorvanectl diff \"preset:My GT7\"\n"
    "  quorvanectl diff \"preset:Fanatec factory defaults\" friend.quorvane\n"
    "  quorvanectl diff - --json < message.txt";

constexpr const char* setFooter =
    "Codes are those of the base's own display (quorvanectl read lists them).\n"
    "Words work as values too: SEN=AUTO BLI=OFF FFS=PEA ACP=CbP. So do units: FF=80% SEN=900deg.\n"
    "CODE+=N and CODE-=N change the present value. Ctrl-C finishes the value in flight.\n\n"
    "Examples:\n"
    "  quorvanectl set SEN=900 FF=80\n"
    "  quorvanectl set SEN=AUTO BLI=OFF\n"
    "  quorvanectl set FF+=5\n"
    "  quorvanectl set FF=80 NDP=25 --dry-run";

constexpr const char* selectFooter =
    "In the standard menu, A is set 1. C is set 2, unless another custom set is active already.\n\n"
    "Examples:\n"
    "  quorvanectl select 3\n"
    "  quorvanectl select A";

constexpr const char* modeFooter =
    "Examples:\n"
    "  quorvanectl mode\n"
    "  quorvanectl mode advanced";

constexpr const char* historyFooter =
    "The latest write comes first. Quorvane keeps a history for each base.\n\n"
    "Examples:\n"
    "  quorvanectl history\n"
    "  quorvanectl history --json";

constexpr const char* undoFooter =
    "Each value is read back. A value that was changed since is left alone and named. Undoing\n"
    "again goes further back. The base must be in the set and mode of that write.\n\n"
    "Examples:\n"
    "  quorvanectl undo\n"
    "  quorvanectl undo --dry-run";

constexpr const char* redoFooter =
    "Each value is read back. A value that was changed since is left alone and named.\n\n"
    "Examples:\n"
    "  quorvanectl redo\n"
    "  quorvanectl redo --dry-run";

constexpr const char* rotationFooter =
    "Example:\n"
    "  quorvanectl rotation 540";

constexpr const char* rawFooter =
    "Example:\n"
    "  quorvanectl raw ff 03 02";

constexpr const char* factoryResetFooter =
    "Example:\n"
    "  quorvanectl factory-reset --yes";

constexpr const char* usbResetFooter =
    "Example:\n"
    "  quorvanectl usb-reset";

constexpr const char* monitorFooter =
    "Without a base it waits for one.\n\n"
    "Examples:\n"
    "  quorvanectl monitor\n"
    "  quorvanectl monitor --json";

constexpr const char* doctorFooter =
    "Goes through everything from the USB bus to the base's menu, and says what to do next.\n"
    "Nothing is changed. Exit status 0 when all is well.\n\n"
    "Examples:\n"
    "  quorvanectl doctor\n"
    "  quorvanectl doctor --report quorvane-report.txt";

constexpr const char* udevRuleFooter =
    "Without an option it prints the rule. --install asks for root once, through pkexec or sudo,\n"
    "applies the rule to an attached base and says whether that opens now. By hand, after the "
    "rule\n"
    "is in place: sudo udevadm control --reload && sudo udevadm trigger\n\n"
    "Examples:\n"
    "  quorvanectl udev-rule --install\n"
    "  quorvanectl udev-rule --remove\n"
    "  quorvanectl udev-rule | sudo tee /etc/udev/rules.d/70-quorvane.rules";

// The arguments of one command, filled in by CLI11.
struct BaseWords {
  std::vector<std::string> assignments;
  std::vector<std::string> sides;
  std::vector<std::string> bytes;
  std::string code;
  std::string set;
  std::string degrees;
  std::string mode;
  std::string report;
  bool force = false;
  bool yes = false;
  bool isDryRun = false;
  UdevRuleWish udevRule;
};

// Adds the commands one by one. The commands' functions share ownership of the words.
class BaseParser {
 public:
  BaseParser(CLI::App& app, ParsedCommands& commands) : app_(app), commands_(commands) {}

  void addLooking() {
    add("devices", "List the attached bases and whether you may open them", devicesFooter,
        devicesCommand);
    add("read", "Show who the base is and the tuning menu of its active set", readFooter,
        readCommand);
    add("explain", "Say in plain words what a setting of the menu does", explainFooter,
        [words = words_](auto& context) { return explainCommand(context, words->code); })
        .add_option("code", words_->code, "The setting's code on the base's display, such as NDP")
        ->type_name("CODE")
        ->required();
  }

  void addComparing() {
    CLI::App& comparing =
        add("diff", "Compare the base, presets, settings files or text, value by value", diffFooter,
            [words = words_](auto& context) { return diffCommand(context, words->sides); });
    const auto addSide = [words = words_](const std::string& side) {
      words->sides.push_back(side);
    };
    comparing
        .add_option_function<std::string>("side", addSide, "One of: base, preset:NAME, a file, -")
        ->type_name("SIDE")
        ->required();
    comparing
        .add_option_function<std::string>("other", addSide,
                                          "The right side (default: the base is the left one)")
        ->type_name("SIDE");
    commands_.back().whenFailed = ExitStatus::wrongUsage;
  }

  void addTuning() {
    CLI::App& setting =
        add("set", "Write values into the active set, one at a time, each read back", setFooter,
            [words = words_](auto& context) {
              return setCommand(context, words->assignments, words->isDryRun);
            });
    setting.add_option("values", words_->assignments, "What to write, such as SEN=900 FF=80")
        ->type_name("CODE=VALUE")
        ->required();
    setting.add_flag("--dry-run", words_->isDryRun, "Only print what would be written");
    add("select", "Make another tuning set active", selectFooter,
        [words = words_](auto& context) { return selectCommand(context, words->set); })
        .add_option("set", words_->set, "The set's number, 1 to 5, or its name, A or C")
        ->type_name("SET")
        ->required();
    add("mode", "Show the menu's mode, or switch to one", modeFooter,
        [words = words_](auto& context) { return modeCommand(context, words->mode); })
        .add_option("mode", words_->mode,
                    "The mode to switch to; nothing is sent when already there")
        ->type_name("standard|advanced");
  }

  void addHistory() {
    constexpr const char* dryRunHelp = "Print what would be written, and write nothing";
    add("history", "List what was written to the base, and what became of it", historyFooter,
        historyCommand);
    add("undo", "Write the values before the last write back", undoFooter,
        [words = words_](auto& context) { return undoCommand(context, words->isDryRun); })
        .add_flag("--dry-run", words_->isDryRun, dryRunHelp);
    add("redo", "Write what the last undo took back again", redoFooter,
        [words = words_](auto& context) { return redoCommand(context, words->isDryRun); })
        .add_flag("--dry-run", words_->isDryRun, dryRunHelp);
  }

  void addDirect() {
    add("rotation", "Set the steering angle directly, without touching the menu", rotationFooter,
        [words = words_](auto& context) { return rotationCommand(context, words->degrees); })
        .add_option("degrees", words_->degrees, "Degrees, from 90 to the base's largest angle")
        ->type_name("DEGREES")
        ->required();
    add("raw", "Send one packet as given", rawFooter,
        [words = words_](auto& context) { return rawCommand(context, words->bytes); })
        .add_option("bytes", words_->bytes, "Hexadecimal bytes, the report ID first: ff 03 02")
        ->type_name("BYTES")
        ->required();
    add("factory-reset", "Set every tuning set back to defaults", factoryResetFooter,
        [words = words_](auto& context) { return factoryResetCommand(context, words->yes); })
        .add_flag("--yes", words_->yes, "Yes, reset all sets; this cannot be undone");
    add("usb-reset", "Re-enumerate the base as if its cable were unplugged and plugged back in",
        usbResetFooter, usbResetCommand);
  }

  void addMachine() {
    add("monitor", "Print a line for each arrival, removal and changed value until Ctrl-C",
        monitorFooter, monitorCommand);
    CLI::App& doctor = add("doctor", "Find out why a base is not found or does not answer",
                           doctorFooter, [words = words_](auto& context) {
                             return doctorCommand(context, words->report, words->force);
                           });
    doctor
        .add_option("--report", words_->report,
                    "Write what a bug report needs to this file as well; \"-\" is standard output")
        ->type_name("FILE");
    doctor.add_flag("--force", words_->force, "Replace the file if there is one");
    CLI::App& rule =
        add("udev-rule", "Print the udev rule that lets you use the base without being root",
            udevRuleFooter,
            [words = words_](auto& context) { return udevRuleCommand(context, words->udevRule); });
    rule.add_flag("--install", words_->udevRule.installs,
                  "Put it in /etc/udev/rules.d, as root, and have udev apply it");
    rule.add_flag("--remove", words_->udevRule.removes, "Take it away from there again");
  }

 private:
  template <typename Run>
  CLI::App& add(const char* name, const char* help, const char* footer, Run run) {
    CLI::App& parser = *app_.add_subcommand(name, help);
    parser.footer(footer);
    commands_.push_back({&parser, std::move(run)});
    return parser;
  }

  CLI::App& app_;
  ParsedCommands& commands_;
  const std::shared_ptr<BaseWords> words_ = std::make_shared<BaseWords>();
};

}  // namespace

void addBaseCommands(CLI::App& app, ParsedCommands& commands) {
  BaseParser parser(app, commands);
  parser.addLooking();
  parser.addComparing();
  parser.addTuning();
  parser.addHistory();
  parser.addDirect();
  parser.addMachine();
}

}  // namespace quorvane
