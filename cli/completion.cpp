#include "cli/completion.h"

#include <CLI/CLI.hpp>
#include <exception>

#include "cli/completion_place.h"
#include "cli/completion_values.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

void addOptions(const CLI::App& command, std::vector<CompletionCandidate>& candidates) {
  for (const CLI::Option* const option : command.get_options({})) {
    if (!option->nonpositional()) continue;
    for (const std::string& name : option->get_lnames()) {
      candidates.push_back({"--" + name, option->get_description()});
    }
  }
}

// The options of the command and of its parents, without the parents' --help and --version.
CompletionChoice options(const CLI::App& command) {
  CompletionChoice choice;
  addOptions(command, choice.candidates);
  for (const CLI::App* above = command.get_parent(); above != nullptr;
       above = above->get_parent()) {
    CompletionChoice inherited;
    addOptions(*above, inherited.candidates);
    for (CompletionCandidate& candidate : inherited.candidates) {
      if (candidate.word != "--help" && candidate.word != "--version") {
        choice.candidates.push_back(std::move(candidate));
      }
    }
  }
  return choice;
}

CompletionChoice commands(const CLI::App& command) {
  CompletionChoice choice;
  for (const CLI::App* const sub : command.get_subcommands({})) {
    choice.candidates.push_back({sub->get_name(), sub->get_description()});
  }
  return choice;
}

CompletionChoice choiceFor(const CompletionPlace& place, const World& world) {
  if (place.value != nullptr) return completionValues(place, world);
  if (!place.lead.empty()) return {};
  const bool isOption = place.takesOptions && place.typed.starts_with('-');
  return isOption ? options(*place.command) : commands(*place.command);
}

// Whether the word is one line without control characters, which the shells accept unchanged.
bool isSafeWord(const std::string& word) { return oneLine(word) == word; }

}  // namespace

ExitStatus printCompletions(const CLI::App& app, const std::vector<std::string>& words,
                            const World& world) {
  const CompletionPlace place = completionPlace(app, words);
  CompletionChoice choice;
  try {
    choice = choiceFor(place, world);
  } catch (const std::exception&) {
    return ExitStatus::done;
  }
  for (const CompletionCandidate& candidate : choice.candidates) {
    if (!startsWithIgnoringCase(candidate.word, place.typed)) continue;
    if (!isSafeWord(candidate.word)) continue;
    writeTo(world.out,
            fmt::format("{}{}\t{}\n", place.lead, candidate.word, oneLine(candidate.description)));
  }
  if (choice.files) writeTo(world.out, "\tfiles\n");
  return ExitStatus::done;
}

}  // namespace quorvane
