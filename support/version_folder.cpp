#include "support/version_folder.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <system_error>
#include <tuple>
#include <utility>

#include "support/file.h"
#include "support/file_replacement.h"
#include "support/text.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using Version = VersionFolder::Version;

constexpr std::uint32_t lastNumber = 999'999'999;
constexpr std::size_t timeLength = 16;  // "20260301T093000Z"

std::string nameOf(std::uint32_t number, WallSeconds time) {
  std::string text = iso8601(time);
  std::erase_if(text, [](char c) { return c == '-' || c == ':'; });
  return fmt::format("{:06}-{}.json", number, text);
}

std::optional<WallSeconds> parseTime(std::string_view text) {
  if (text.size() != timeLength) return std::nullopt;
  return parseISO8601(fmt::format("{}-{}-{}:{}:{}", text.substr(0, 4), text.substr(4, 2),
                                  text.substr(6, 5), text.substr(11, 2), text.substr(13)));
}

// None for a file with another name than nameOf().
std::optional<Version> versionNamed(const path& file) {
  const std::string name = file.filename().string();
  const std::size_t dash = name.find('-');
  if (dash == std::string::npos) return std::nullopt;
  const auto number = parseInteger(name.substr(0, dash));
  const auto time = parseTime(std::string_view(name).substr(dash + 1, timeLength));
  if (!number || *number < 1 || *number >= lastNumber || !time) return std::nullopt;
  Version version{static_cast<std::uint32_t>(*number), *time, file};
  if (nameOf(version.number, version.time) != name) return std::nullopt;
  return version;
}

std::optional<Version> versionOf(const std::filesystem::directory_entry& entry) {
  std::error_code failure;
  if (!std::filesystem::is_regular_file(entry.symlink_status(failure))) return std::nullopt;
  auto version = versionNamed(entry.path());
  if (version) version->size = entry.file_size(failure);
  return failure ? std::nullopt : version;
}

bool isContent(const Version& version, std::string_view content) {
  if (version.size != content.size()) return false;
  try {
    return readFile(version.file, content.size()) == content;
  } catch (const FileError&) {
    return false;
  }
}

void removeOldest(const std::vector<Version>& versions) {
  std::uint64_t bytes = 0;
  std::size_t count = 0;
  std::for_each(versions.rbegin(), versions.rend(), [&](const Version& version) {
    bytes += version.size;
    ++count;
    if (count <= VersionFolder::mostVersions && bytes <= VersionFolder::mostBytes) return;
    std::error_code ignored;  // the next call tries again
    std::filesystem::remove(version.file, ignored);
  });
}

}  // namespace

VersionFolder::VersionFolder(path directory) : directory_(std::move(directory)) {}

std::vector<Version> VersionFolder::versions() const {
  std::error_code failure;
  std::vector<Version> versions;
  std::filesystem::directory_iterator entry(directory_, failure);
  if (failure == std::errc::no_such_file_or_directory) return {};
  for (; !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    if (auto version = versionOf(*entry)) versions.push_back(*std::move(version));
  }
  if (failure) throw FileError(directory_, failure.value());
  std::sort(versions.begin(), versions.end(), [](const Version& a, const Version& b) {
    return std::tie(a.number, a.time) < std::tie(b.number, b.time);
  });
  return versions;
}

void VersionFolder::keep(std::string_view content, WallSeconds time) const {
  if (content.size() > mostBytes) throw FileError(directory_, "The content is longer than 8 MiB");
  createDirectories(directory_);
  removeAbandonedReplacements(directory_);
  std::vector<Version> all = versions();
  if (!all.empty() && isContent(all.back(), content)) return;
  const std::uint32_t number = all.empty() ? 1 : all.back().number + 1;
  if (number >= lastNumber) throw FileError(all.back().file, "No greater number is possible");
  const path file = directory_ / nameOf(number, time);
  replaceFile(file, content);
  all.push_back({number, time, file, content.size()});
  removeOldest(all);
}

}  // namespace quorvane
