#include "cli/usage_errors.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <optional>

#include "cli/completion_place.h"
#include "cli/json_output.h"
#include "cli/suggestion.h"
#include "cli/usage_line.h"
#include "cli/word_parser.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

using WordList = std::vector<std::string>;

constexpr const char* optionsEnd = "--";

// The innermost command that the parser reached.
const CLI::App& reachedCommand(const CLI::App& app) {
  const auto parsed = app.get_subcommands();
  return parsed.empty() ? app : reachedCommand(*parsed.front());
}

bool isGroup(const CLI::App& command) { return !command.get_subcommands({}).empty(); }

WordList commandNames(const CLI::App& group) {
  WordList names;
  for (const CLI::App* const command : group.get_subcommands({})) {
    names.push_back(command->get_name());
  }
  return names;
}

std::string listed(const WordList& words) {
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

// The options that may follow the command's name: its own and those of its parents.
WordList optionNames(const CLI::App& command) {
  WordList names;
  for (const CLI::App* level = &command; level != nullptr; level = level->get_parent()) {
    for (const CLI::Option* const option : level->get_options({})) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  return names;
}

// `words` with `old`, a subsequence of it, replaced by `replacement`; appended if `old` is absent.
WordList replaced(const WordList& words, const WordList& old, const WordList& replacement) {
  WordList result;
  std::size_t found = 0;
  const auto insert = [&] { result.insert(result.end(), replacement.begin(), replacement.end()); };
  for (const std::string& word : words) {
    const bool isOld = found < old.size() && word == old[found];
    if (!isOld) result.push_back(word);
    if (isOld && ++found == 1) insert();
  }
  if (found == 0) insert();
  return result;
}

std::string withSuggestion(std::string message, const WordList& line) {
  if (!line.empty()) message += "\nDid you mean: " + commandText(line);
  return message;
}

std::string lowerFirst(std::string text) {
  if (!text.empty()) text.front() = lowerCase(text.substr(0, 1)).front();
  return text;
}

// "set" and the assignments that words without a command probably mean; empty for none.
WordList likelySet(const WordList& unknown) {
  WordList words = likelyAssignments(unknown);
  const bool areAssignments = unknown.front().find('=') != std::string::npos;
  if (words.empty() && areAssignments) words = unknown;
  if (!words.empty()) words.insert(words.begin(), "set");
  return words;
}

// The command line that was probably meant, for an unknown command; empty for none.
WordList likelyCommand(const CLI::App& group, const WordList& unknown, const WordList& line) {
  const std::string& name = unknown.front();
  if (const auto near = nearestWord(name, commandNames(group))) {
    return replaced(line, {name}, {*near});
  }
  if (group.get_parent() != nullptr) return {};
  for (const CLI::App* const below : group.get_subcommands({})) {
    const WordList names = commandNames(*below);
    if (std::find(names.begin(), names.end(), name) == names.end()) continue;
    return replaced(line, {name}, {below->get_name(), name});
  }
  const WordList assignments = likelySet(unknown);
  return assignments.empty() ? WordList() : replaced(line, unknown, assignments);
}

WrongUsage unknownCommand(const CLI::App& group, const WordList& unknown, const WordList& line) {
  const std::string path = commandPath(group);
  std::string message = fmt::format("There is no command or option \"{}{}\"",
                                    path.empty() ? "" : path + " ", oneLine(unknown.front()));
  if (!path.empty()) {
    message += fmt::format("\n{} takes one of: {}", path, listed(commandNames(group)));
  }
  return {withSuggestion(message, likelyCommand(group, unknown, line)), usageLine(group)};
}

WrongUsage unknownOption(const CLI::App& command, const std::string& unknown,
                         const WordList& line) {
  const std::string name = unknown.substr(0, unknown.find('='));
  WordList likely;
  if (const auto near = nearestWord(name, optionNames(command))) {
    likely = replaced(line, {unknown}, {*near + unknown.substr(name.size())});
  }
  return {
      withSuggestion(fmt::format("{} has no option \"{}\"", commandPath(command), oneLine(unknown)),
                     likely),
      usageLine(command)};
}

// The command's arguments so far.
WordList argumentsOf(const CLI::App& command) {
  WordList words;
  for (const CLI::Option* const option : command.get_options({})) {
    if (!option->get_positional()) continue;
    for (const std::string& word : option->results()) words.push_back(asTyped(word));
  }
  return words;
}

// The line with a name of several words joined into one, if the command takes one name.
WordList likelyName(const CLI::App& command, const WordList& extra, const WordList& line) {
  WordList arguments = argumentsOf(command);
  if (arguments.size() != 1) return {};
  const auto named = command.get_options([](const CLI::Option* option) {
    return option->get_positional() &&
           (option->get_type_name() == "NAME" || option->get_type_name() == "WHICH");
  });
  if (named.empty()) return {};
  arguments.insert(arguments.end(), extra.begin(), extra.end());
  std::string name;
  for (const std::string& word : arguments) name += (name.empty() ? "" : " ") + word;
  return replaced(line, arguments, {name});
}

WrongUsage tooManyWords(const CLI::App& command, const WordList& extra, const WordList& line) {
  return {withSuggestion(fmt::format("{} takes no more words: \"{}\" is one too many",
                                     commandPath(command), oneLine(extra.front())),
                         likelyName(command, extra, line)),
          usageLine(command)};
}

WrongUsage unknownWords(const CLI::App& reached, const WordList& unknown, const WordList& line) {
  const std::string& first = unknown.front();
  const bool isOption = first.size() > 1 && first.starts_with('-');
  if (isOption && !commandPath(reached).empty() && !isGroup(reached)) {
    return unknownOption(reached, first, line);
  }
  if (isGroup(reached)) return unknownCommand(reached, unknown, line);
  return tooManyWords(reached, unknown, line);
}

// For a line that lacks an argument or a subcommand.
WrongUsage missingWord(const CLI::App& reached) {
  const std::string path = commandPath(reached);
  if (path.empty()) {
    return {"A command is needed: " + listed(commandNames(reached)), usageLine(reached)};
  }
  if (isGroup(reached)) {
    return {fmt::format("{} takes one of: {}", path, listed(commandNames(reached))),
            usageLine(reached)};
  }
  for (const CLI::Option* const option : reached.get_options({})) {
    if (!option->get_required() || option->count() > 0) continue;
    return {fmt::format("{} needs {}: {}", path, option->get_type_name(),
                        lowerFirst(option->get_description())),
            usageLine(reached)};
  }
  return {path + " needs more words", usageLine(reached)};
}

// The error in an option's value, if any: it is missing or empty, or the option takes none.
std::optional<std::string> wrongValue(const CLI::App& app, WordList words) {
  WordList before;
  for (const std::string& word : words) {
    if (word == optionsEnd) break;
    before.push_back(word);
    const std::size_t equals = word.find('=');
    if (!word.starts_with(optionsEnd) || equals == std::string::npos) continue;
    const CLI::Option* const option = completionPlace(app, before).value;
    const std::string name = oneLine(word.substr(0, equals));
    if (equals + 1 == word.size()) return fmt::format("\"{}=\" has nothing behind it", name);
    if (option != nullptr && !takesValue(*option)) {
      return fmt::format("\"{}\": {} takes no value", oneLine(word), name);
    }
  }
  const std::string last = words.empty() ? "" : words.back();
  words.emplace_back();
  const CLI::Option* const pending = completionPlace(app, words).value;
  if (pending == nullptr || !pending->nonpositional()) return std::nullopt;
  return fmt::format("{} needs a value: {}, as in {} {}", oneLine(last), pending->get_type_name(),
                     oneLine(last), pending->get_type_name());
}

}  // namespace

WrongUsage explainRefusal(const CLI::App& app, const CLI::ParseError& refusal,
                          const WordList& words) {
  const CLI::App& reached = reachedCommand(app);
  WordList unknown = app.remaining(true);
  std::transform(unknown.begin(), unknown.end(), unknown.begin(), asTyped);
  std::erase(unknown, optionsEnd);
  // First, because the parser takes the next word for a missing value of an option.
  if (const auto wrong = wrongValue(app, words)) return {*wrong, usageLine(reached)};
  if (!unknown.empty()) return unknownWords(reached, unknown, words);
  if (dynamic_cast<const CLI::RequiredError*>(&refusal) != nullptr) return missingWord(reached);
  return {"These words make no command: " + commandText(words), usageLine(reached)};
}

WrongUsage explainRefusal(const CLI::App& command, const UsageError& refusal,
                          const WordList& words) {
  WordList line;
  if (!refusal.likely().empty()) line = replaced(words, argumentsOf(command), refusal.likely());
  return {withSuggestion(refusal.what(), line), ""};
}

bool asksForJson(const WordList& words) {
  const auto end = std::find(words.begin(), words.end(), optionsEnd);
  return std::find(words.begin(), end, "--json") != end;
}

ExitStatus reportWrongUsage(const World& world, bool json, const WrongUsage& wrong) {
  if (json) printJson(world, errorJson(wrongUsageKind, wrong.message));
  printTo(world.err, "{}\n", wrong.message);
  if (!wrong.usage.empty()) {
    printTo(world.err, "Usage: {}\nMore with --help.\n", wrong.usage);
  }
  return ExitStatus::wrongUsage;
}

}  // namespace quorvane
