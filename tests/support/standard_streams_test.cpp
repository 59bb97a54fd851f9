#include "support/standard_streams.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include "tests/support/child_process.h"

namespace quorvane {
namespace {

bool isTaken(int descriptor) { return ::fcntl(descriptor, F_GETFD) >= 0; }

bool isDevNull(int descriptor) {
  struct stat is {};
  struct stat wanted {};
  return ::fstat(descriptor, &is) == 0 && ::stat("/dev/null", &wanted) == 0 &&
         is.st_rdev == wanted.st_rdev;
}

TEST(StandardStreams, ClosedOnesAreTakenSoThatNothingElseGetsTheirNumbers) {
  for (int closed = 0; closed < 8; ++closed) {
    EXPECT_EQ(inChildProcess([closed]() -> std::string {
                for (int fd = 0; fd < 3; ++fd) {
                  if ((closed >> fd & 1) != 0) ::close(fd);
                }
                prepareStandardStreams();
                for (int fd = 0; fd < 3; ++fd) {
                  if (!isTaken(fd)) return fmt::format("{} is closed", fd);
                  if ((closed >> fd & 1) != 0 && !isDevNull(fd)) {
                    return fmt::format("{} is no /dev/null", fd);
                  }
                }
                const int next = ::open("/", O_RDONLY | O_CLOEXEC);
                return next > 2 ? "kept" : fmt::format("{} was given away", next);
              }),
              "kept")
        << closed;
  }
}

TEST(StandardStreams, UsingAClosedOneStillFails) {
  EXPECT_EQ(inChildProcess([]() -> std::string {
              for (int fd = 0; fd < 3; ++fd) ::close(fd);
              prepareStandardStreams();
              char byte = 'x';
              for (const int fd : {1, 2}) {
                if (::write(fd, &byte, 1) != -1 || errno != EBADF) return "written";
              }
              return ::read(0, &byte, 1) == -1 && errno == EBADF ? "refused" : "read";
            }),
            "refused");
}

TEST(StandardStreams, OpenOnesStayAsTheyAre) {
  EXPECT_EQ(inChildProcess([]() -> std::string {
              const Pipe pipe;
              ::dup2(pipe.writing.get(), STDOUT_FILENO);
              prepareStandardStreams();
              char byte = 'x';
              if (::write(STDOUT_FILENO, &byte, 1) != 1) return "not written";
              return ::read(pipe.reading.get(), &byte, 1) == 1 ? "the same" : "another";
            }),
            "the same");
}

TEST(StandardStreams, APipeThatNobodyReadsIsAnErrorAndNoSignal) {
  EXPECT_EQ(inChildProcess([]() -> std::string {
              prepareStandardStreams();
              Pipe pipe;
              pipe.reading.reset();
              const char byte = 'x';
              const bool refused = ::write(pipe.writing.get(), &byte, 1) == -1 && errno == EPIPE;
              return refused ? "refused" : "written";
            }),
            "refused");
}

TEST(StandardStreams, AProgramStartedLaterMeetsTheSignalAsUsual) {
  EXPECT_EQ(inChildProcess([]() -> std::string {
              prepareStandardStreams();
              ::execl("/bin/sh", "sh", "-c", "kill -PIPE $$", nullptr);
              return "not started";
            }),
            fmt::format("signal {}", SIGPIPE));
}

}  // namespace
}  // namespace quorvane
