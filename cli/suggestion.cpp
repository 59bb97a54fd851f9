#include "cli/suggestion.h"

#include <algorithm>

#include "protocol/menu_text.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::size_t shortWord = 3;

bool isSwap(const std::string& x, const std::string& y, std::size_t i, std::size_t j) {
  return i > 1 && j > 1 && x[i - 1] == y[j - 2] && x[i - 2] == y[j - 1];
}

bool isPlainInShell(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  constexpr std::string_view others = "0123456789-_=+:,./%@";
  return isLetter || others.find(c) != std::string_view::npos;
}

std::optional<TuningParameter> likelyParameter(const std::string& code) {
  if (const auto exact = TuningParameter::named(code)) return exact;
  std::vector<std::string> codes;
  for (const TuningParameter parameter : TuningParameter::allCases()) {
    codes.emplace_back(parameter.code());
  }
  const auto nearest = nearestWord(code, codes);
  return nearest ? TuningParameter::named(*nearest) : std::nullopt;
}

// Splits words into codes, operators and values, with or without spaces between them.
class AssignmentReader {
 public:
  explicit AssignmentReader(const std::vector<std::string>& words) : words_(words) {}

  bool atEnd() const { return at_ == words_.size(); }

  // The next assignment in the right form; none when the words cannot be understood.
  std::optional<std::string> next() {
    const std::string word = words_[at_++];
    const std::size_t end = word.find_first_of("=:+-");
    const auto parameter = likelyParameter(word.substr(0, end));
    if (!parameter) return std::nullopt;
    std::string rest = end == std::string::npos ? "" : word.substr(end);
    if (rest.empty() && startsWithOperator()) rest = words_[at_++];
    const std::string sign =
        rest.starts_with("+=") || rest.starts_with("-=") ? rest.substr(0, 1) : "";
    if (!sign.empty()) rest.erase(0, 1);
    if (rest.starts_with('=') || rest.starts_with(':')) rest.erase(0, 1);
    if (rest.empty() && !atEnd()) rest = words_[at_++];
    const auto value =
        sign.empty() ? MenuText::parse(*parameter, rest) : MenuText::parseNumber(*parameter, rest);
    if (!value) return std::nullopt;
    if (!atEnd() && equalIgnoringCase(words_[at_], parameter->unit())) ++at_;
    return std::string(parameter->code()) + sign + "=" + rest;
  }

 private:
  bool startsWithOperator() const {
    if (atEnd()) return false;
    const std::string& word = words_[at_];
    return word.starts_with('=') || word.starts_with(':') || word.starts_with("+=") ||
           word.starts_with("-=");
  }

  const std::vector<std::string>& words_;
  std::size_t at_ = 0;
};

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
  const std::string x = lowerCase(a);
  const std::string y = lowerCase(b);
  // edits[i][j] turn the first i letters of x into the first j of y.
  std::vector<std::vector<std::size_t>> edits(x.size() + 1, std::vector<std::size_t>(y.size() + 1));
  for (std::size_t i = 0; i <= x.size(); ++i) {
    for (std::size_t j = 0; j <= y.size(); ++j) {
      if (i == 0 || j == 0) {
        edits[i][j] = i + j;
        continue;
      }
      const std::size_t replacement = x[i - 1] == y[j - 1] ? 0 : 1;
      edits[i][j] =
          std::min({edits[i - 1][j] + 1, edits[i][j - 1] + 1, edits[i - 1][j - 1] + replacement});
      if (isSwap(x, y, i, j)) edits[i][j] = std::min(edits[i][j], edits[i - 2][j - 2] + 1);
    }
  }
  return edits[x.size()][y.size()];
}

std::optional<std::string> nearestWord(std::string_view word,
                                       const std::vector<std::string>& choices) {
  constexpr std::size_t longestWord = 64;
  if (word.size() > longestWord) return std::nullopt;
  std::size_t least = (word.size() > shortWord ? 2 : 1) + 1;
  std::optional<std::string> nearest;
  for (const std::string& choice : choices) {
    const std::size_t distance = editDistance(word, choice);
    if (distance >= std::max(word.size(), choice.size())) continue;
    if (distance == least) nearest.reset();
    if (distance >= least) continue;
    least = distance;
    nearest = choice;
  }
  return nearest;
}

std::string shellWord(const std::string& word) {
  if (!word.empty() && std::all_of(word.begin(), word.end(), isPlainInShell)) return word;
  std::string quoted = "'";
  for (const char c : word) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

std::string commandText(const std::vector<std::string>& words) {
  std::string text = "quorvanectl";
  for (const std::string& word : words) text += " " + shellWord(oneLine(word));
  return text;
}

std::vector<std::string> likelyAssignments(const std::vector<std::string>& words) {
  std::vector<std::string> likely;
  AssignmentReader reader(words);
  while (!reader.atEnd()) {
    const auto next = reader.next();
    if (!next) return {};
    likely.push_back(*next);
  }
  return likely == words ? std::vector<std::string>() : likely;
}

}  // namespace quorvane
