#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "cli/assignments.h"
#include "cli/command_line.h"
#include "cli/completion.h"
#include "cli/json_output.h"
#include "cli/preset_names.h"
#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "protocol/menu_text.h"
#include "simulator/simulate_option.h"
#include "simulator/simulated_backend.h"
#include "support/invariant.h"
#include "support/text.h"

namespace quorvane::Fuzz {
namespace {

using Words = std::vector<std::string>;

// An output stream in memory.
class Printed {
 public:
  Printed() : file_(::open_memstream(&buffer_, &size_)) {}
  ~Printed() {
    std::fclose(file_);
    std::free(buffer_);
  }
  Printed(const Printed&) = delete;
  Printed& operator=(const Printed&) = delete;

  std::FILE* file() { return file_; }

  std::string text() {
    std::fflush(file_);
    return {buffer_, size_};
  }

 private:
  char* buffer_ = nullptr;
  std::size_t size_ = 0;
  std::FILE* file_;
};

// Parses the words with one simulated base attached and without user presets.
struct Reading {
  explicit Reading(const Words& words) {
    static SimulatedBackend backend;
    static const auto device = [] {
      auto created = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                             SimulatedDevice::Time::simulated);
      backend.add(created);
      return created;
    }();
    static const PresetStore store("/nonexistent/presets.json");
    World world{{backend}, printedOut.file(), printedErr.file()};
    world.presets = []() -> const PresetStore& { return store; };
    status = readCommandLine(words, world);
    out = printedOut.text();
    err = printedErr.text();
  }

  Printed printedOut;
  Printed printedErr;
  std::optional<ExitStatus> status;
  std::string out;
  std::string err;
};

Words linesOf(const std::string& text) {
  Words lines;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

// Whether nothing is printed, or the error as a document for programs.
bool isNothingOrError(const std::string& out) {
  if (out.empty()) return true;
  const Json document = Json::parse(out, nullptr, false);
  return document.is_object() && document.contains("error") &&
         document["error"].value("kind", "") == "wrongUsage";
}

void expectRead(const Words& words) {
  const Reading reading(words);
  invariant((reading.out + reading.err).find('\0') == std::string::npos,
            "what is printed are texts");
  if (!reading.status) {
    invariant(reading.out.empty() && reading.err.empty(), "a command prints for itself");
  } else if (*reading.status == ExitStatus::wrongUsage) {
    invariant(reading.err.ends_with('\n'), "wrong words are explained");
    invariant(isNothingOrError(reading.out), "wrong words give nothing else than their error");
  } else {
    invariant(*reading.status == ExitStatus::done && reading.err.empty(), "help is no failure");
    const bool isCompletion = words.front() == completionWord;
    invariant(isCompletion || reading.out.ends_with('\n'), "help helps");
  }
}

// The candidate in a line of completions.
std::string offered(const std::string& line) { return line.substr(0, line.find('\t')); }

void expectOfferedAgain(Words words, const std::string& word) {
  words.back() = word;
  const Words again = linesOf(Reading(words).out);
  invariant(std::any_of(again.begin(), again.end(),
                        [&](const std::string& next) { return next.starts_with(word); }),
            "a candidate stays one when it is typed");
}

void expectCompletions(Words words) {
  if (words.empty()) words.emplace_back();
  words.insert(words.begin(), completionWord);
  const std::string typed = words.back();
  const Reading reading(words);
  invariant(reading.status == ExitStatus::done && reading.err.empty(), "completing never fails");
  Words lines = linesOf(reading.out);
  std::erase(lines, "\tfiles");
  // A tab in the typed word would look like the start of a description.
  if (oneLine(typed) != typed) return;
  for (const std::string& line : lines) {
    invariant(std::count(line.begin(), line.end(), '\t') == 1, "a candidate has a description");
    invariant(startsWithIgnoringCase(offered(line), typed),
              "a candidate begins with what is typed");
  }
  // A candidate that ends in "=" is not complete.
  if (lines.empty() || offered(lines.back()).ends_with('=')) return;
  expectOfferedAgain(words, offered(lines.back()));
}

void expectAssignments(Words words) {
  std::erase_if(words, [](const std::string& word) { return word.find('=') == std::string::npos; });
  std::vector<Assignment> assignments;
  try {
    assignments = parseAssignments(words);
  } catch (const UsageError& error) {
    invariant(*error.what() != '\0', "a wrong assignment is explained");
    return;
  }
  invariant(assignments.size() == words.size(), "every word is an assignment");
  invariant(std::is_sorted(assignments.begin(), assignments.end(),
                           [](const Assignment& a, const Assignment& b) {
                             return a.parameter.offset() < b.parameter.offset();
                           }),
            "assignments are in the order of the menu");
  Words again;
  again.reserve(assignments.size());
  for (const Assignment& assignment : assignments) again.push_back(assignmentText(assignment));
  invariant(parseAssignments(again) == assignments, "assignments survive as words");
}

void expectValue(const std::string& word) {
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    const auto value = MenuText::parse(parameter, word);
    if (!value) continue;
    const auto again = MenuText::parse(parameter, std::to_string(*value));
    invariant(again == value, "a word stands for the number that it means");
    invariant(!MenuText::text(parameter, *value, std::nullopt).empty(), "a value has a text");
  }
}

void expectBytes(const std::string& word) {
  const auto bytes = parseHexBytes(word);
  if (!bytes) return;
  invariant(!bytes->empty() && parseHexBytes(hexDump(*bytes)) == bytes, "bytes survive their dump");
}

void expectName(const std::string& word) {
  try {
    const std::string name = presetName(word);
    invariant(presetName(name) == name, "a name has no space around it");
    invariant(word.find(name) != std::string::npos, "a name is a part of the word");
  } catch (const UsageError&) {
  }
  try {
    const TuningPreset& named = presetNamed(TuningPreset::builtIn(), word);
    const std::size_t scope = word.size() - std::min(word.size(), named.name.size());
    invariant(equalIgnoringCase(word.substr(scope), named.name) || UUID::parse(word) == named.id,
              "a preset answers to its name");
  } catch (const UsageError& error) {
    invariant(std::string_view(error.what()).find('\t') == std::string_view::npos,
              "a message has no control characters of the word");
  }
}

void expectProducts(const std::string& word) {
  try {
    const auto products = productsToSimulate(word);
    invariant(std::ssize(products) == std::count(word.begin(), word.end(), ',') + 1,
              "each product makes a base");
    for (const FanatecProduct& product : products) {
      invariant(product.hasTuningMenu(), "a simulated base has a menu");
    }
  } catch (const std::invalid_argument&) {
  }
}

}  // namespace

void words(ByteView bytes) {
  std::string text = textOf(bytes);
  std::replace(text.begin(), text.end(), '\0', '\n');  // arguments cannot contain NUL
  const Words words = linesOf(text);
  expectRead(words);
  expectCompletions(words);
  expectAssignments(words);
  for (const std::string& word : words) {
    expectValue(word);
    expectBytes(word);
    expectName(word);
    expectProducts(word);
  }
}

}  // namespace quorvane::Fuzz
