#include "platform/udev_rules.h"

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "protocol/product.h"
#include "support/text.h"

namespace quorvane {
namespace {

// The system's rules file that turns the tag "uaccess" into access lists for the user at the seat.
constexpr std::string_view seatRules = "73-seat-late.rules";
constexpr std::string_view seatTag = "uaccess";
constexpr std::string_view blanks = " \t\r";

// One `KEY{attribute}=="value"` of a rule.
struct Token {
  std::string key;
  std::string attribute;
  std::string operation;
  std::string value;

  bool isCondition() const { return operation == "==" || operation == "!="; }
};

struct Rule {
  UdevRule source;
  std::vector<Token> tokens;
};

enum class Match { no, unknown, yes };

// Reads the tokens of one rule, whose continuation lines are already joined.
class TokenReader {
 public:
  explicit TokenReader(std::string_view text) : rest_(text) {}

  bool atEnd() {
    skip(" \t\r,");
    return rest_.empty();
  }

  // None on a syntax error.
  std::optional<Token> next() {
    Token token;
    token.key = takeName();
    if (take("{")) token.attribute = takeUntil('}');
    skip(blanks);
    token.operation = takeOperation();
    skip(blanks);
    takeName();  // a prefix of the string, such as e"..."
    if (token.key.empty() || token.operation.empty() || !take("\"")) return std::nullopt;
    token.value = takeUntil('"');
    return isWhole_ ? std::optional(std::move(token)) : std::nullopt;
  }

 private:
  void skip(std::string_view characters) {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(characters), rest_.size()));
  }

  bool take(std::string_view text) {
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
  }

  std::string takeName() {
    const auto isPart = [](char c) {
      return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
    };
    const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), isPart);
    std::string name(rest_.begin(), end);
    rest_.remove_prefix(name.size());
    return name;
  }

  std::string takeOperation() {
    for (const char* const operation : {"==", "!=", "+=", "-=", ":=", "="}) {
      if (take(operation)) return operation;
    }
    return {};
  }

  std::string takeUntil(char end) {
    std::string text;
    while (!rest_.empty() && rest_.front() != end) {
      if (rest_.starts_with("\\\"")) rest_.remove_prefix(1);
      text += rest_.front();
      rest_.remove_prefix(1);
    }
    isWhole_ = isWhole_ && !rest_.empty();
    if (!rest_.empty()) rest_.remove_prefix(1);
    return text;
  }

  std::string_view rest_;
  bool isWhole_ = true;
};

std::vector<Token> parseTokens(std::string_view text) {
  std::vector<Token> tokens;
  TokenReader reader(text);
  while (!reader.atEnd()) {
    auto token = reader.next();
    if (!token) return {};
    tokens.push_back(std::move(*token));
  }
  return tokens;
}

std::string_view withoutBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// Joins lines that end with a backslash. Skips comments and lines with syntax errors.
std::vector<Rule> parseRules(const UdevRuleFile& file) {
  std::vector<Rule> rules;
  Rule rule;
  std::string_view text = file.text;
  for (int number = 1; !text.empty(); ++number) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = withoutBlanks(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.starts_with('#')) continue;
    if (rule.source.text.empty()) rule.source = {file.path, number, {}};
    const bool goesOn = line.ends_with('\\');
    if (goesOn) line.remove_suffix(1);
    rule.source.text += line;
    if (goesOn && !text.empty()) continue;
    rule.tokens = parseTokens(rule.source.text);
    if (!rule.tokens.empty()) rules.push_back(std::move(rule));
    rule = {};
  }
  return rules;
}

bool matchesAny(const std::string& patterns, const std::vector<std::string>& texts) {
  std::string_view rest = patterns;
  for (;;) {
    const std::string pattern(rest.substr(0, rest.find('|')));
    for (const std::string& text : texts) {
      if (::fnmatch(pattern.c_str(), text.c_str(), 0) == 0) return true;
    }
    if (pattern.size() == rest.size()) return false;
    rest.remove_prefix(pattern.size() + 1);
  }
}

// The values that a condition is matched against; none if only a running udev knows them.
std::optional<std::vector<std::string>> asked(const Token& token, const RuleSubject& subject,
                                              const char* action) {
  using Texts = std::vector<std::string>;
  const bool isOnUSB = !subject.vendorID.empty();
  if (token.key == "SUBSYSTEM") return Texts{"hidraw"};
  if (token.key == "KERNEL") return Texts{subject.node};
  if (token.key == "ACTION") return Texts{action};
  if (token.key == "SUBSYSTEMS") return subject.subsystems;
  if (token.key == "KERNELS") return subject.names;
  const bool isVendor = token.attribute == "idVendor" || token.attribute == "ID_VENDOR_ID";
  const bool isProduct = token.attribute == "idProduct" || token.attribute == "ID_MODEL_ID";
  if ((token.key == "ATTRS" || token.key == "ENV") && (isVendor || isProduct)) {
    return isOnUSB ? Texts{isVendor ? subject.vendorID : subject.productID} : Texts{};
  }
  if (token.key == "ATTR" && (isVendor || isProduct)) return Texts{};  // not attributes of the node
  return std::nullopt;
}

Match matchOf(const Rule& rule, const RuleSubject& subject, const char* action) {
  Match match = Match::yes;
  for (const Token& token : rule.tokens) {
    if (!token.isCondition() && token.key != "IMPORT" && token.key != "PROGRAM") continue;
    const auto texts = token.isCondition() ? asked(token, subject, action) : std::nullopt;
    if (!texts) {
      match = Match::unknown;
    } else if (matchesAny(token.value, *texts) != (token.operation == "==")) {
      return Match::no;
    }
  }
  return match;
}

bool namesVendor(const Rule& rule) {
  return std::any_of(rule.tokens.begin(), rule.tokens.end(), [](const Token& token) {
    return token.isCondition() &&
           lowerCase(token.value).find(Fanatec::vendorHex) != std::string::npos;
  });
}

std::optional<std::uint32_t> parseMode(const std::string& text) {
  std::uint32_t mode = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '7' || mode > 07777) return std::nullopt;
    mode = mode * 8 + static_cast<std::uint32_t>(digit - '0');
  }
  if (text.empty()) return std::nullopt;
  return mode;
}

// Adds the effect of an assignment to `facts`; true if it changes permissions.
bool note(const Token& token, UdevRuleFacts& facts) {
  if (token.key == "TAG") {
    // "-=" has no effect up to systemd 257: access lists are set for every tag that the device ever
    // had. Only a plain assignment clears earlier tags.
    if (token.operation == "-=") return false;
    if (token.value == seatTag) return facts.tagsForSeat = true;
    if (token.operation != "+=") return facts.untagsForSeat = true;
  } else if (token.key == "MODE") {
    facts.mode = parseMode(token.value);
    return facts.mode.has_value();
  } else if (token.key == "GROUP") {
    facts.group = token.value;
    return true;
  }
  return false;
}

std::optional<UdevRuleFacts> effectOf(const Rule& rule) {
  UdevRuleFacts facts;
  facts.rule = rule.source;
  facts.isInTime = std::filesystem::path(rule.source.file).filename() < seatRules;
  bool changes = false;
  for (const Token& token : rule.tokens) {
    if (!token.isCondition() && note(token, facts)) changes = true;
  }
  return changes ? std::optional(std::move(facts)) : std::nullopt;
}

std::string valueOf(const Rule& rule, std::string_view key) {
  for (const Token& token : rule.tokens) {
    if (token.key == key) return token.value;
  }
  return {};
}

// Evaluates the rules of one file, in order, for an event with this action. Follows GOTO, which
// only jumps forward.
class RuleRun {
 public:
  RuleRun(const RuleSubject& subject, const char* action) : subject_(subject), action_(action) {}

  // Whether the next rule of the file is executed.
  bool runs(const Rule& rule) {
    if (!label_.empty() && valueOf(rule, "LABEL") != label_) return false;
    label_.clear();
    const Match match = matchOf(rule, subject_, action_);
    if (match == Match::yes) label_ = valueOf(rule, "GOTO");
    return match == Match::yes || (match == Match::unknown && namesVendor(rule));
  }

 private:
  const RuleSubject& subject_;
  const char* const action_;
  std::string label_;  // the target of a GOTO; empty: no jump
};

// Adds the effects of a file's rules on the events "add" and "change".
void addRules(const UdevRuleFile& file, const RuleSubject& subject,
              std::vector<UdevRuleFacts>& result) {
  RuleRun added(subject, "add");
  RuleRun changed(subject, "change");
  for (const Rule& rule : parseRules(file)) {
    const bool runsOnAdd = added.runs(rule);
    const bool runsOnChange = changed.runs(rule);
    auto facts = runsOnAdd || runsOnChange ? effectOf(rule) : std::nullopt;
    if (!facts) continue;
    facts->runsOnAdd = runsOnAdd;
    facts->runsOnChange = runsOnChange;
    result.push_back(std::move(*facts));
  }
}

}  // namespace

std::vector<UdevRule> vendorRules(const std::vector<UdevRuleFile>& files) {
  std::vector<UdevRule> result;
  for (const UdevRuleFile& file : files) {
    for (Rule& rule : parseRules(file)) {
      if (namesVendor(rule)) result.push_back(std::move(rule.source));
    }
  }
  return result;
}

std::vector<UdevRuleFacts> rulesFor(const RuleSubject& subject,
                                    const std::vector<UdevRuleFile>& files) {
  std::vector<UdevRuleFacts> result;
  for (const UdevRuleFile& file : files) addRules(file, subject, result);
  return result;
}

}  // namespace quorvane
