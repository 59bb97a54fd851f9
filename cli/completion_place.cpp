#include "cli/completion_place.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace quorvane {
namespace {

constexpr const char* endOfOptions = "--";
constexpr const char* simulateWord = "--simulate";

// Whether the option takes its value only after "=".
bool hasOptionalValue(const CLI::Option& option) {
  return option.get_type_name().starts_with("[=");
}

// The option of that name of the command or of its nearest parent; null if there is none.
const CLI::Option* findOption(const CLI::App* command, const std::string& name) {
  for (; command != nullptr; command = command->get_parent()) {
    for (const CLI::Option* const option : command->get_options({})) {
      if (option->nonpositional() && option->check_name(name)) return option;
    }
  }
  return nullptr;
}

const CLI::App* findCommand(const CLI::App& command, const std::string& name) {
  const auto all = command.get_subcommands({});
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const CLI::App* c) { return c->get_name() == name; });
  return found == all.end() ? nullptr : *found;
}

// The positional argument that the command's next word belongs to; the last may take many words.
const CLI::Option* nextPositional(const CLI::App& command, std::size_t count) {
  std::size_t before = 0;
  for (const CLI::Option* const option : command.get_options({})) {
    if (!option->get_positional()) continue;
    before += static_cast<std::size_t>(option->get_items_expected_max());
    if (count < before) return option;
  }
  return nullptr;
}

class Walk {
 public:
  explicit Walk(const CLI::App& app) { place_.command = &app; }

  void pass(const std::string& word) {
    if (pending_ != nullptr) {
      pending_ = nullptr;
    } else if (place_.takesOptions && word == endOfOptions) {
      place_.takesOptions = false;
    } else if (place_.takesOptions && word.starts_with('-')) {
      passOption(word);
    } else if (const CLI::App* const command = findCommand(*place_.command, word)) {
      place_.command = command;
    } else {
      place_.positional.push_back(word);
    }
  }

  CompletionPlace arrive(const std::string& word) && {
    const std::size_t equals = word.find('=');
    place_.typed = word;
    if (pending_ != nullptr) {
      place_.value = pending_;
    } else if (!place_.takesOptions || !word.starts_with('-')) {
      place_.value = nextPositional(*place_.command, place_.positional.size());
    } else if (equals != std::string::npos) {
      place_.value = findOption(place_.command, word.substr(0, equals));
      place_.lead = word.substr(0, equals + 1);
      place_.typed = word.substr(equals + 1);
    }
    return std::move(place_);
  }

 private:
  void passOption(const std::string& word) {
    if (word == simulateWord || word.starts_with(std::string(simulateWord) + '=')) {
      place_.simulates = true;
    }
    if (word.find('=') != std::string::npos) return;
    const CLI::Option* const option = findOption(place_.command, word);
    if (option != nullptr && takesValue(*option) && !hasOptionalValue(*option)) pending_ = option;
  }

  CompletionPlace place_;
  const CLI::Option* pending_ = nullptr;  // the option whose value is the next word
};

}  // namespace

bool takesValue(const CLI::Option& option) { return option.get_items_expected_min() > 0; }

CompletionPlace completionPlace(const CLI::App& app, const std::vector<std::string>& words) {
  Walk walk(app);
  for (std::size_t i = 0; i + 1 < words.size(); ++i) walk.pass(words[i]);
  return std::move(walk).arrive(words.empty() ? std::string() : words.back());
}

}  // namespace quorvane
