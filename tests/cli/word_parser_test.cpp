#include "cli/word_parser.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

// The result of a parser with every kind of option.
struct Parsed {
  std::string option;
  std::string first;
  Lines others;
  bool flag = false;
};

Parsed parse(const Lines& words) {
  CLI::App app;
  Parsed parsed;
  app.fallthrough();
  app.add_option("--option", parsed.option);
  app.add_flag("--flag", parsed.flag);
  CLI::App* const command = app.add_subcommand("do");
  command->add_option("first", parsed.first)->required();
  command->add_option("others", parsed.others);
  parseWords(app, words);
  return parsed;
}

TEST(ParseWords, TakesEachWordAsItWasTyped) {
  const std::vector<std::pair<Lines, Parsed>> cases{
      {{"do", "a"}, {"", "a", {}, false}},
      {{"do", "a", "b", "c", "--flag"}, {"", "a", {"b", "c"}, true}},
      {{"do", "[a]", "[b]", "[c,d]", "[[e]]", "[]"},
       {"", "[a]", {"[b]", "[c,d]", "[[e]]", "[]"}, false}},
      {{"--option", "[x,y]", "do", "a"}, {"[x,y]", "a", {}, false}},
      {{"--option=[x,y]", "do", "a,b", "c,d"}, {"[x,y]", "a,b", {"c,d"}, false}},
      {{"do", "[a", "b]", "[", "]"}, {"", "[a", {"b]", "[", "]"}, false}},
      {{"do", "", "", "{}", "%%"}, {"", "", {"", "{}", "%%"}, false}},
      {{"do", "a", "--", "--flag", "[-x]"}, {"", "a", {"--flag", "[-x]"}, false}},
  };
  for (const auto& [words, wanted] : cases) {
    const Parsed parsed = parse(words);
    EXPECT_EQ(parsed.option, wanted.option);
    EXPECT_EQ(parsed.first, wanted.first);
    EXPECT_EQ(parsed.others, wanted.others);
    EXPECT_EQ(parsed.flag, wanted.flag);
  }
}

TEST(ParseWords, ThrowsWhatTheParserSays) {
  EXPECT_THROW(parse({"do"}), CLI::RequiredError);
  EXPECT_THROW(parse({"do", "a", "--else"}), CLI::ExtrasError);
}

TEST(ParseWords, LeavesNoMarksInWhatTheParserSays) {
  try {
    parse({"do", "[a]", "--else", "[b]"});
    FAIL();
  } catch (const CLI::ParseError& error) {
    EXPECT_EQ(asTyped(error.what()).find('\0'), std::string::npos);
  }
  EXPECT_EQ(asTyped("[b]" + std::string(1, '\0') + " and c"), "[b] and c");
}

}  // namespace
}  // namespace quorvane
