#include "cli/help_command.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "cli/suggestion.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr const char* helpFooter =
    "Examples:\n"
    "  quorvanectl help\n"
    "  quorvanectl help presets save";

const CLI::App* commandNamed(const CLI::App& group, const std::string& name) {
  for (const CLI::App* const command : group.get_subcommands({})) {
    if (command->get_name() == name) return command;
  }
  return nullptr;
}

// The words with the one at `place` replaced by the nearest command name; empty if none is near.
std::vector<std::string> likelyWords(const CLI::App& group, std::vector<std::string> words,
                                     std::size_t place) {
  std::vector<std::string> names;
  for (const CLI::App* const command : group.get_subcommands({})) {
    names.push_back(command->get_name());
  }
  const auto near = nearestWord(words[place], names);
  if (!near) return {};
  words[place] = *near;
  return words;
}

const CLI::App& commandOf(const CLI::App& app, const std::vector<std::string>& words) {
  const CLI::App* command = &app;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const CLI::App* const next = commandNamed(*command, words[i]);
    if (next == nullptr) {
      throw UsageError(fmt::format("There is no command \"{}\" to help with", oneLine(words[i])),
                       likelyWords(*command, words, i));
    }
    command = next;
  }
  return *command;
}

}  // namespace

void addHelpCommand(CLI::App& app, ParsedCommands& commands) {
  CLI::App& parser = *app.add_subcommand("help", "Show all commands, or how one is used");
  parser.footer(helpFooter);
  const auto words = std::make_shared<std::vector<std::string>>();
  parser.add_option("command", *words, "The command to explain")->type_name("COMMAND");
  commands.push_back(
      {&parser, [&app, words](const CommandContext& context) {
         const CLI::App& command = commandOf(app, *words);
         // Not CLI::App::help(): it shows the help of the parsed command, which is `help` itself.
         const auto format = command.get_formatter();
         printLinesTo(context.world.out,
                      format->make_help(&command, command.get_name(), CLI::AppFormatMode::Normal));
         return ExitStatus::done;
       }});
}

}  // namespace quorvane
