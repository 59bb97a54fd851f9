#include "cli/word_parser.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace quorvane {
namespace {

// Appended to a word to hide its closing bracket from CLI11. A word cannot contain a NUL itself.
constexpr char mark = '\0';

std::string marked(std::string word) {
  if (word.starts_with('[') && word.ends_with(']')) word += mark;
  return word;
}

std::string unmarked(std::string word) {
  if (word.ends_with(mark)) word.pop_back();
  return word;
}

void takeMarksOff(CLI::App& app) {
  for (CLI::Option* const option : app.get_options()) option->transform(unmarked);
  for (CLI::App* const command : app.get_subcommands([](CLI::App* /*any*/) { return true; })) {
    takeMarksOff(*command);
  }
}

}  // namespace

void parseWords(CLI::App& app, std::vector<std::string> words) {
  takeMarksOff(app);
  std::transform(words.begin(), words.end(), words.begin(), marked);
  std::reverse(words.begin(), words.end());
  app.parse(std::move(words));
}

std::string asTyped(std::string text) {
  std::erase(text, mark);
  return text;
}

}  // namespace quorvane
