#include "support/read_pipe.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

#include "support/unique_fd.h"

namespace quorvane {
namespace {

// The bytes of one read; empty at the end.
std::string nextBlock(int descriptor, const std::filesystem::path& name) {
  std::array<char, 65536> block{};
  for (;;) {
    const ssize_t length = ::read(descriptor, block.data(), block.size());
    if (length >= 0) return {block.data(), static_cast<std::size_t>(length)};
    if (errno == EAGAIN) {
      pollfd watched{descriptor, POLLIN, 0};
      ::poll(&watched, 1, -1);
    } else if (errno != EINTR) {
      throw FileError(name, errno);
    }
  }
}

}  // namespace

std::string readToEnd(int descriptor, const std::filesystem::path& name, std::uint64_t limit) {
  std::string content;
  for (;;) {
    const std::string block = nextBlock(descriptor, name);
    if (block.empty()) return content;
    content += block;
    if (content.size() > limit)
      throw FileError(name, fmt::format("Longer than {} MiB", limit >> 20));
  }
}

std::optional<std::string> readPipe(const std::filesystem::path& path, std::uint64_t limit) {
  std::error_code unknown;
  if (!std::filesystem::is_fifo(path, unknown)) return std::nullopt;
  // With O_NONBLOCK, open() does not wait for a writer, and read() returns 0 if there is none.
  const UniqueFd fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (!fd) throw FileError(path, errno);
  std::string content = readToEnd(fd.get(), path, limit);
  if (content.empty()) return std::nullopt;
  return content;
}

}  // namespace quorvane
