#include "support/printing.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <memory>
#include <string>

#include "tests/support/child_process.h"

namespace quorvane {
namespace {

struct Close {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, Close>;

template <typename Print>
std::string printed(Print print) {
  char* text = nullptr;
  std::size_t size = 0;
  Stream stream(::open_memstream(&text, &size));
  print(stream.get());
  stream.reset();
  std::string result(text, size);
  std::free(text);
  return result;
}

TEST(Printing, FormatsLinesWithoutControls) {
  EXPECT_EQ(printed([](std::FILE* stream) {
              printTo(stream, "{}: {:>3}\n", "a\x1B[2Jb\u0085\u202E\xFF", 7);
            }),
            "a [2Jb  \uFFFD:   7\n");
  EXPECT_EQ(printed([](std::FILE* stream) { printLinesTo(stream, "a\r\nb\n"); }), "a \nb\n");
}

TEST(Printing, WritesBytesAsTheyAre) {
  const std::string bytes("\x1B\0\xFF\t", 4);
  EXPECT_EQ(printed([&](std::FILE* stream) { writeTo(stream, bytes); }), bytes);
}

TEST(Printing, AStreamThatFailsThrowsNothing) {
  const Stream full(std::fopen("/dev/full", "w"));
  std::setbuf(full.get(), nullptr);
  printTo(full.get(), "{}\n", 1);
  EXPECT_NE(std::ferror(full.get()), 0);
}

// The outcome of printing in a process whose standard output is `path`.
std::string finished(const char* path, const std::string& text) {
  return inChildProcess([&] {
    if (std::freopen(path, "w", stdout) == nullptr) return std::string("not opened");
    printLinesTo(stdout, text);
    flush(stdout);
    printLinesTo(stdout, "more\n");
    return std::to_string(finishStandardOutput());
  });
}

TEST(Printing, TheFirstFailureOfStandardOutputIsKept) {
  EXPECT_EQ(finished("/dev/null", "text\n"), "0");
  EXPECT_EQ(finished("/dev/full", "text\n"), std::to_string(ENOSPC));
  EXPECT_EQ(finished("/dev/full", std::string(100'000, 'x')), std::to_string(ENOSPC));
}

}  // namespace
}  // namespace quorvane
