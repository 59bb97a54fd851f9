#include "doctor/masking.h"

#include <algorithm>

#include "support/text.h"

namespace quorvane {
namespace {

constexpr const char* serialMask = "(serial number)";
constexpr const char* nameMask = "(user)";
constexpr const char* homeMask = "~";
constexpr const char* nobodysName = "root";

bool isPartOfWord(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || byte >= 0x80;
}

bool standsAlone(std::string_view text, std::size_t begin, std::size_t end) {
  const bool goesOnBefore = begin > 0 && isPartOfWord(text[begin - 1]) && isPartOfWord(text[begin]);
  const bool goesOnAfter =
      end < text.size() && isPartOfWord(text[end]) && isPartOfWord(text[end - 1]);
  return !goesOnBefore && !goesOnAfter;
}

std::string masked(std::string_view text, const Secret& secret) {
  const std::string wanted = lowerCase(secret.text);
  const std::string lower = lowerCase(text);
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = lower.find(wanted); at != std::string::npos;
       at = lower.find(wanted, std::max(at + 1, done))) {
    const std::size_t end = at + wanted.size();
    if (!standsAlone(text, at, end)) continue;
    result += text.substr(done, at - done);
    result += secret.mask;
    done = end;
  }
  result += text.substr(done);
  return result;
}

void addSerial(std::vector<Secret>& secrets, const std::string& serial) {
  if (serial.empty()) return;
  secrets.push_back({serial, serialMask});
  // The names of device links have underscores instead of spaces.
  std::string linked = serial;
  std::replace(linked.begin(), linked.end(), ' ', '_');
  if (linked != serial) secrets.push_back({std::move(linked), serialMask});
}

// Adds the value of a rule's condition on a serial number: ATTRS{serial}=="..."
void addSerialIn(std::vector<Secret>& secrets, const std::string& rule) {
  const std::string lower = lowerCase(rule);
  for (const char* const key : {"serial", "uniq"}) {
    for (std::size_t at = lower.find(key); at != std::string::npos; at = lower.find(key, at + 1)) {
      const std::size_t begin = rule.find('"', at);
      const std::size_t end = begin == std::string::npos ? begin : rule.find('"', begin + 1);
      if (end == std::string::npos) break;
      addSerial(secrets, rule.substr(begin + 1, end - begin - 1));
    }
  }
}

}  // namespace

std::vector<Secret> secretsIn(const DoctorFacts& facts) {
  std::vector<Secret> secrets;
  for (const auto& device : facts.machine.usb) addSerial(secrets, device.serialNumber);
  for (const auto& device : facts.machine.hid) addSerial(secrets, device.serialNumber);
  for (const auto& device : facts.devices) addSerial(secrets, device.serialNumber);
  if (facts.base) addSerial(secrets, facts.base->serialNumber);
  for (const auto& rule : facts.machine.vendorRules) addSerialIn(secrets, rule.text);
  const UserFacts& user = facts.machine.user;
  if (user.home.size() > 1) secrets.push_back({user.home, homeMask});
  if (!user.name.empty() && user.name != nobodysName) secrets.push_back({user.name, nameMask});
  return secrets;
}

std::string masked(std::string_view text, const std::vector<Secret>& secrets) {
  std::string result(text);
  for (const Secret& secret : secrets) result = masked(result, secret);
  return result;
}

}  // namespace quorvane
