#include "cli/usage_line.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/completion_place.h"

namespace quorvane {
namespace {

std::string argumentText(const CLI::Option& argument) {
  std::string text = argument.get_type_name();
  if (argument.get_items_expected_max() > 1) text += "...";
  return argument.get_required() ? text : "[" + text + "]";
}

std::string optionText(const CLI::Option& option) {
  const std::string name = "--" + option.get_lnames().front();
  return takesValue(option) ? "[" + name + " " + option.get_type_name() + "]" : "[" + name + "]";
}

std::string argumentList(const CLI::App& command) {
  std::string arguments;
  std::string options;
  for (const CLI::Option* const option : command.get_options({})) {
    if (option == command.get_help_ptr() || option == command.get_version_ptr()) continue;
    if (option->get_positional()) {
      arguments += " " + argumentText(*option);
    } else {
      options += " " + optionText(*option);
    }
  }
  return arguments + options;
}

class HelpFormat final : public CLI::Formatter {
 public:
  std::string make_usage(const CLI::App* command, std::string /*name*/) const override {
    return "Usage: " + usageLine(*command) + "\n";
  }
};

}  // namespace

std::string commandPath(const CLI::App& command) {
  if (command.get_parent() == nullptr) return {};
  const std::string above = commandPath(*command.get_parent());
  return above.empty() ? command.get_name() : above + " " + command.get_name();
}

std::string usageLine(const CLI::App& command) {
  if (command.get_parent() == nullptr) return "quorvanectl [OPTION...] COMMAND [ARGUMENT...]";
  const bool isGroup = !command.get_subcommands({}).empty();
  return "quorvanectl " + commandPath(command) +
         (isGroup ? " COMMAND [ARGUMENT...]" : argumentList(command));
}

void useUsageLine(CLI::App& app) { app.formatter(std::make_shared<HelpFormat>()); }

}  // namespace quorvane
