#include "tests/faults/public_members.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace quorvane {
namespace {

// The header's text without comments and empty braces.
std::string contentOf(std::string_view header) {
  std::ifstream file(std::string(SOURCE_FOLDER "/").append(header));
  std::ostringstream content;
  content << file.rdbuf();
  return std::regex_replace(content.str(), std::regex("//[^\n]*|\\{\\}"), "");
}

// The text between the class's braces. Each nested block becomes a `;`, the end of a statement.
std::string bodyOf(const std::string& content, std::string_view className) {
  const std::regex head("class " + std::string(className) + "\\b[^;{]*\\{");
  std::smatch found;
  if (!std::regex_search(content, found, head)) {
    throw std::runtime_error("there is no class " + std::string(className));
  }
  std::string body;
  int depth = 1;
  for (auto at = found[0].second; at != content.end() && depth > 0; ++at) {
    if (*at == '}' && --depth == 1) body += ';';
    if (depth == 1 && *at != '}') body += *at == '{' ? ';' : *at;
    if (*at == '{') ++depth;
  }
  return body;
}

std::string publicPartOf(const std::string& body) {
  const std::size_t begin = body.find("public:");
  std::size_t end = body.find("private:");
  end = std::min(end, body.find("signals:"));
  if (begin > end) throw std::runtime_error("there is no public part");
  return body.substr(begin, end - begin);
}

std::vector<std::string> statementsIn(const std::string& text) {
  std::vector<std::string> statements;
  std::istringstream stream(text);
  for (std::string statement; std::getline(stream, statement, ';');) {
    statements.push_back(std::regex_replace(statement, std::regex("\\s+"), " "));
  }
  return statements;
}

}  // namespace

std::set<std::string> changingMembers(std::string_view header, std::string_view className) {
  static const std::regex function(
      R"(^ ?(?!using )(?:public: )?[^()=]*\b(\w+)\((.*)\)( const)? ?$)");
  std::set<std::string> names;
  for (const std::string& statement :
       statementsIn(publicPartOf(bodyOf(contentOf(header), className)))) {
    std::smatch parts;
    if (!std::regex_match(statement, parts, function) || parts[3].matched) continue;
    const std::string name = parts[1];
    if (name != className) names.insert(name);
  }
  return names;
}

}  // namespace quorvane
