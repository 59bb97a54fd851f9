#include "support/file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "tests/error_text.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using Names = std::set<std::string>;
using Lines = std::vector<std::string>;

constexpr std::array faults{ENOSPC, EIO, EDQUOT, EROFS, EACCES};

std::string text(const path& file, std::string_view reason) {
  return file.string() + ": " + std::string(reason);
}

std::string text(const path& file, int error) {
  return text(file, std::generic_category().message(error));
}

std::string readingError(const path& file, std::uint64_t limit = anyLength) {
  return errorText([&] { readFile(file, limit); });
}

std::string replacingError(const path& file, std::string_view content = "new") {
  return errorText([&] { replaceFile(file, content); });
}

// This many bytes, with every value among them.
std::string bytes(std::size_t length) {
  std::string content;
  for (std::size_t i = 0; i < length; ++i) content += static_cast<char>((i * 7 + i / 251) & 0xFF);
  return content;
}

struct stat statusOf(const path& file) {
  struct stat status {};
  EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
  return status;
}

mode_t modeOf(const path& file) { return statusOf(file).st_mode & 07777; }

void setMode(const path& file, mode_t mode) { ASSERT_EQ(::chmod(file.c_str(), mode), 0); }

void putFifo(const path& file) { ASSERT_EQ(::mkfifo(file.c_str(), 0666), 0); }

std::size_t openDescriptors() {
  return static_cast<std::size_t>(
      std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

// The name of a file for the test's expectations: relative, with "DIRECTORY" for the directory and
// "TEMPORARY" for a temporary file.
std::string shown(const path& file, const TemporaryDirectory& directory) {
  if (file.empty() || file == directory.path()) return file.empty() ? "" : "DIRECTORY";
  const std::string name = file.lexically_relative(directory.path());
  return name.starts_with(".quorvane-") && name.ends_with(".tmp") ? "TEMPORARY" : name;
}

// The recorded calls with these names, one line each.
Lines shown(const FileCalls& calls, const Names& names, const TemporaryDirectory& directory) {
  Lines lines;
  for (const FileCall& call : calls.made()) {
    if (!names.contains(call.name)) continue;
    std::string line = call.name + " " + shown(call.file, directory);
    if (!call.newName.empty()) line += " " + shown(call.newName, directory);
    lines.push_back(line);
  }
  return lines;
}

// Every read, write and fsync fails with EINTR once before it is made.
FileCalls::Verdict interruptions() {
  return [interrupted = false](const FileCall& call, std::size_t) mutable {
    if (!Names{"read", "write", "fsync"}.contains(call.name)) return 0;
    interrupted = !interrupted;
    return interrupted ? EINTR : 0;
  };
}

TEST(FileError, SaysThePathAndTheReason) {
  EXPECT_STREQ(FileError("/a/b", ENOSPC).what(), "/a/b: No space left on device");
  EXPECT_STREQ(FileError("b", "Not a regular file").what(), "b: Not a regular file");
  EXPECT_STREQ(FileError("", EIO).what(), ": Input/output error");
}

TEST(FileError, KnowsAMissingFile) {
  for (const int error : {ENOENT, ENOTDIR, EACCES, EIO, EISDIR, ELOOP}) {
    EXPECT_EQ(FileError("file", error).isMissingFile(), error == ENOENT) << error;
  }
  EXPECT_FALSE(FileError("file", "No such file or directory").isMissingFile());
}

TEST(ReadFile, GivesTheWholeContent) {
  const TemporaryDirectory directory;
  for (const std::size_t length : {0U, 1U, 4096U, 65535U, 65536U, 65537U, 131072U, 300001U}) {
    putFile(directory / "file", bytes(length));
    EXPECT_EQ(readFile(directory / "file"), bytes(length)) << length;
  }
}

TEST(ReadFile, FollowsLinks) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "content");
  std::filesystem::create_symlink("file", directory / "link");
  std::filesystem::create_symlink("link", directory / "chain");
  EXPECT_EQ(readFile(directory / "chain"), "content");
}

TEST(ReadFile, RefusesWhatIsMissing) {
  const TemporaryDirectory directory;
  std::filesystem::create_symlink("nothing", directory / "dangling");
  for (const char* const name : {"file", "folder/file", "dangling"}) {
    try {
      readFile(directory / name);
      ADD_FAILURE() << name;
    } catch (const FileError& error) {
      EXPECT_EQ(error.what(), text(directory / name, "No such file or directory"));
      EXPECT_TRUE(error.isMissingFile());
    }
  }
}

TEST(ReadFile, RefusesWhatIsNoRegularFile) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "");
  putFifo(directory / "fifo");
  std::filesystem::create_symlink("fifo", directory / "link");
  const std::vector<std::pair<path, std::string>> cases{
      {directory.path(), "Is a directory"},
      {directory / "fifo", "Not a regular file"},
      {directory / "link", "Not a regular file"},
      {"/dev/null", "Not a regular file"},
      {directory / "file" / "file", "Not a directory"},
      {"", "No such file or directory"},
  };
  for (const auto& [file, reason] : cases) EXPECT_EQ(readingError(file), text(file, reason));
}

TEST(ReadFile, RefusesWhatTheUserMayNotRead) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "content");
  setMode(directory / "file", 0);
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              becomeOrdinaryUser();
              return readFile(directory / "file");
            }),
            text(directory / "file", "Permission denied"));
}

TEST(ReadFile, TakesAFileOfExactlyTheLimit) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  constexpr std::uint64_t mebibyte = std::uint64_t{1024} * 1024;
  const std::vector<std::pair<std::uint64_t, std::string>> cases{
      {1, "Longer than 1 bytes"},          {1000, "Longer than 1000 bytes"},
      {65536, "Longer than 65536 bytes"},  {mebibyte, "Longer than 1 MiB"},
      {3 * mebibyte, "Longer than 3 MiB"}, {mebibyte + 1, "Longer than 1048577 bytes"},
  };
  for (const auto& [limit, reason] : cases) {
    putFile(file, bytes(limit));
    EXPECT_EQ(readFile(file, limit), bytes(limit)) << limit;
    putFile(file, bytes(limit + 1));
    EXPECT_EQ(readingError(file, limit), text(file, reason));
  }
}

TEST(ReadFile, AFileBeyondTheLimitIsNotRead) {
  const TemporaryDirectory directory;
  std::filesystem::path file = directory / "file";
  putFile(file, "");
  std::filesystem::resize_file(file, std::uint64_t{1} << 40);
  const FileCalls calls;
  EXPECT_EQ(readingError(file, 1000), text(file, "Longer than 1000 bytes"));
  EXPECT_EQ(calls.count("read"), 0U);
}

#ifndef QUORVANE_SANITIZED  // the sanitizers have a memory of their own
TEST(ReadFile, AFileLargerThanTheMemoryIsRefused) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  putFile(file, "");
  std::filesystem::resize_file(file, std::uint64_t{1} << 33);
  EXPECT_EQ(inChildProcess([&] {
              const rlimit memory{std::uint64_t{1} << 30, std::uint64_t{1} << 30};
              ::setrlimit(RLIMIT_AS, &memory);
              return readingError(file, anyLength);
            }),
            text(file, "Cannot allocate memory"));
}
#endif

TEST(ReadFile, AFileThatHidesItsSizeIsReadWhole) {
  const path file = "/proc/version";
  const std::string content = contentOf(file);
  ASSERT_EQ(statusOf(file).st_size, 0);
  ASSERT_GT(content.size(), 10U);
  EXPECT_EQ(readFile(file), content);
  EXPECT_EQ(readFile(file, content.size()), content);
  EXPECT_EQ(readingError(file, 10), "/proc/version: Longer than 10 bytes");
}

TEST(ReadFile, GoesOnAfterInterruptions) {
  const TemporaryDirectory directory;
  putFile(directory / "file", bytes(100000));
  const FileCalls calls(interruptions());
  EXPECT_EQ(readFile(directory / "file"), bytes(100000));
  EXPECT_EQ(calls.count("read"), 6U);
}

TEST(ReadFile, NamesTheFileInEveryFailure) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  putFile(file, bytes(100000));
  const std::size_t descriptors = openDescriptors();
  for (const int error : faults) {
    for (std::size_t number = 0; number < 5; ++number) {
      const FileCalls calls(FileCalls::failAt(number, error));
      EXPECT_EQ(readingError(file), text(file, error)) << calls.made().back().name;
      EXPECT_EQ(calls.made().size(), number + 1);
    }
  }
  EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(ReplaceFile, CreatesAFile) {
  const TemporaryDirectory directory;
  replaceFile(directory / "file", "content");
  EXPECT_EQ(contentOf(directory / "file"), "content");
  EXPECT_EQ(directory.names(), Names{"file"});
}

TEST(ReplaceFile, ReplacesTheWholeContent) {
  const TemporaryDirectory directory;
  for (const std::size_t length : {0U, 1U, 70000U, 3U, 0U, 2000001U, 65536U, 5U}) {
    replaceFile(directory / "file", bytes(length));
    EXPECT_EQ(contentOf(directory / "file"), bytes(length)) << length;
    EXPECT_EQ(directory.names(), Names{"file"});
  }
}

TEST(ReplaceFile, TakesARelativePath) {
  const TemporaryDirectory directory;
  std::filesystem::create_directories(directory / "here/below");
  for (const char* const name : {"file", "./file", "below/file", "../file", "below/../file"}) {
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                std::filesystem::current_path(directory / "here");
                replaceFile(name, name);
                return contentOf(name);
              }),
              name);
  }
  EXPECT_EQ(contentOf(directory / "here/file"), "below/../file");
  EXPECT_EQ(contentOf(directory / "here/below/file"), "below/file");
  EXPECT_EQ(contentOf(directory / "file"), "../file");
}

TEST(ReplaceFile, LeavesTheOldFileToThoseWhoHaveItOpen) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  std::ifstream reader(directory / "file");
  replaceFile(directory / "file", "new");
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), "old");
}

TEST(ReplaceFile, KeepsThePermissions) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  for (const mode_t mode :
       {0600U, 0640U, 0644U, 0660U, 0664U, 0666U, 0755U, 0200U, 0700U, 0604U, 0777U}) {
    putFile(file, "old");
    setMode(file, mode);
    replaceFile(file, "new");
    EXPECT_EQ(modeOf(file), mode);
    std::filesystem::remove(file);
  }
}

TEST(ReplaceFile, KeepsTheOwnerWhereTheUserMaySayWhose) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  putFile(file, "old");
  setMode(file, 0640);
  const bool isRoot = ::geteuid() == 0;
  ASSERT_EQ(isRoot ? ::chown(file.c_str(), 1234, 4321) : 0, 0);
  const struct stat before = statusOf(file);
  replaceFile(file, "new");
  const struct stat after = statusOf(file);
  EXPECT_EQ(after.st_uid, before.st_uid);
  EXPECT_EQ(after.st_gid, before.st_gid);
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(contentOf(file), "new");
}

TEST(ReplaceFile, ReplacesAnothersFileThatTheUserMayWriteTo) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  putFile(file, "old");
  setMode(file, 0666);
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              becomeOrdinaryUser();
              replaceFile(file, "new");
              return statusOf(file).st_uid == ::geteuid() ? "own" : "another's";
            }),
            "own");
  EXPECT_EQ(contentOf(file), "new");
  EXPECT_EQ(modeOf(file), 0666U);
}

TEST(ReplaceFile, ANewFileObeysTheUmask) {
  const TemporaryDirectory directory;
  for (const mode_t mask : {0000U, 0002U, 0022U, 0027U, 0077U}) {
    const mode_t before = ::umask(mask);
    replaceFile(directory / "file", "new");
    ::umask(before);
    EXPECT_EQ(modeOf(directory / "file"), 0666 & ~mask);
    std::filesystem::remove(directory / "file");
  }
}

TEST(ReplaceFile, TheUmaskTakesNothingFromAnExistingFile) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  setMode(directory / "file", 0666);
  const mode_t before = ::umask(0077);
  replaceFile(directory / "file", "new");
  ::umask(before);
  EXPECT_EQ(modeOf(directory / "file"), 0666U);
}

TEST(ReplaceFile, FollowsALink) {
  struct Case {
    std::string_view link;
    std::string_view target;
  };
  for (const bool exists : {true, false}) {
    for (const Case& c : {Case{"link", "file"}, Case{"link", "./file"}, Case{"link", "below/other"},
                          Case{"below/link", "../file"}, Case{"below/link", "other"},
                          Case{"below/link", "../below/other"}}) {
      const TemporaryDirectory directory;
      std::filesystem::create_directory(directory / "below");
      const path link = directory / c.link;
      const path target = link.parent_path() / c.target;
      if (exists) putFile(target, "old");
      std::filesystem::create_symlink(c.target, link);
      replaceFile(link, "new");
      EXPECT_EQ(contentOf(target), "new") << link << " " << c.target;
      EXPECT_EQ(std::filesystem::read_symlink(link), c.target);
      EXPECT_TRUE(S_ISREG(statusOf(target).st_mode));
    }
  }
}

TEST(ReplaceFile, FollowsAnAbsoluteLinkToAnotherDirectory) {
  const TemporaryDirectory here;
  const TemporaryDirectory there;
  std::filesystem::create_symlink(there / "file", here / "link");
  replaceFile(here / "link", "new");
  EXPECT_EQ(contentOf(there / "file"), "new");
  EXPECT_EQ(here.names(), Names{"link"});
  EXPECT_EQ(there.names(), Names{"file"});
}

// Makes a chain of this many symbolic links to "file". Returns the first one.
path chainOfLinks(const TemporaryDirectory& directory, int links) {
  std::string target = "file";
  for (int i = 1; i <= links; ++i) {
    const std::string link = "link" + std::to_string(i);
    std::filesystem::create_symlink(target, directory / link);
    target = link;
  }
  return directory / target;
}

TEST(ReplaceFile, FollowsAsManyLinksAsTheKernel) {
  for (const int links : {1, 2, 3, 39, 40, 41, 42}) {
    const TemporaryDirectory directory;
    const path begin = chainOfLinks(directory, links);
    putFile(directory / "file", "old");
    const bool kernelFollows = ::access(begin.c_str(), F_OK) == 0;
    EXPECT_EQ(kernelFollows, links <= 40);
    EXPECT_EQ(replacingError(begin) == "no error", kernelFollows) << links;
    EXPECT_EQ(contentOf(directory / "file"), kernelFollows ? "new" : "old");
    EXPECT_EQ(directory.names().size(), static_cast<std::size_t>(links) + 1);
  }
}

TEST(ReplaceFile, RefusesLinksThatGoInACircle) {
  const TemporaryDirectory directory;
  std::filesystem::create_symlink("self", directory / "self");
  std::filesystem::create_symlink("b", directory / "a");
  std::filesystem::create_symlink("a", directory / "b");
  for (const char* const name : {"self", "a", "b"}) {
    EXPECT_EQ(replacingError(directory / name),
              text(directory / name, "Too many levels of symbolic links"));
  }
  EXPECT_EQ(directory.names(), (Names{"self", "a", "b"}));
}

TEST(ReplaceFile, RefusesWhatIsNoRegularFile) {
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory / "folder");
  putFifo(directory / "fifo");
  const std::vector<std::pair<path, std::string>> cases{
      {directory / "folder", "Is a directory"},
      {directory / "fifo", "Not a regular file"},
      {"/dev/null", "Not a regular file"},
      {"/dev/full", "Not a regular file"},
      {directory / "fifo" / "file", "Not a directory"},
      {directory / "nothing" / "file", "No such file or directory"},
      {"", "No such file or directory"},
  };
  for (const auto& [file, reason] : cases) EXPECT_EQ(replacingError(file), text(file, reason));
  EXPECT_TRUE(S_ISDIR(statusOf(directory / "folder").st_mode));
  EXPECT_TRUE(S_ISFIFO(statusOf(directory / "fifo").st_mode));
  EXPECT_TRUE(S_ISCHR(statusOf("/dev/null").st_mode));
  EXPECT_EQ(directory.names(), (Names{"folder", "fifo"}));
}

TEST(ReplaceFile, RefusesLinksToWhatIsNoRegularFile) {
  const TemporaryDirectory directory;
  std::filesystem::create_symlink("/dev/null", directory / "device");
  std::filesystem::create_symlink(directory.path(), directory / "folder");
  EXPECT_EQ(replacingError(directory / "device"), "/dev/null: Not a regular file");
  EXPECT_EQ(replacingError(directory / "folder"), text(directory.path(), "Is a directory"));
  EXPECT_TRUE(S_ISCHR(statusOf("/dev/null").st_mode));
  EXPECT_EQ(directory.names(), (Names{"device", "folder"}));
}

TEST(ReplaceFile, RefusesAFileThatTheUserMayNotWriteTo) {
  for (const mode_t mode : {0444U, 0440U, 0400U, 0000U}) {
    const TemporaryDirectory directory;
    const path file = directory / "file";
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                becomeOrdinaryUser();
                putFile(file, "old");
                setMode(file, mode);
                replaceFile(file, "new");
                return "no error";
              }),
              text(file, "Permission denied"));
    EXPECT_EQ(modeOf(file), mode);
    setMode(file, 0600);
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(directory.names(), Names{"file"});
  }
}

TEST(ReplaceFile, RefusesADirectoryThatTheUserMayNotWriteTo) {
  const TemporaryDirectory directory;
  const path folder = directory / "folder";
  std::filesystem::create_directory(folder);
  putFile(folder / "file", "old");
  setMode(folder / "file", 0666);
  setMode(folder, 0555);
  for (const char* const name : {"file", "other"}) {
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                becomeOrdinaryUser();
                replaceFile(folder / name, "new");
                return "no error";
              }),
              text(folder / name, "Permission denied"));
  }
  EXPECT_EQ(contentOf(folder / "file"), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
  setMode(folder, 0777);
}

TEST(ReplaceFile, AFileThatGrowsTooLongForTheSystemLeavesTheOldOne) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  for (const bool exists : {false, true}) {
    if (exists) putFile(file, "old");
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                const rlimit limit{10000, 10000};
                ::setrlimit(RLIMIT_FSIZE, &limit);
                ::signal(SIGXFSZ, SIG_IGN);
                replaceFile(file, bytes(10001));
                return "no error";
              }),
              text(file, "File too large"));
    EXPECT_EQ(directory.names(), exists ? Names{"file"} : Names{});
  }
  EXPECT_EQ(contentOf(file), "old");
}

TEST(ReplaceFile, SyncsTheDataThenRenamesThenSyncsTheDirectory) {
  for (const bool exists : {false, true}) {
    const TemporaryDirectory directory;
    if (exists) putFile(directory / "file", "old");
    const FileCalls calls;
    replaceFile(directory / "file", "new");
    EXPECT_EQ(
        shown(calls, {"write", "fsync", "rename"}, directory),
        (Lines{"write TEMPORARY", "fsync TEMPORARY", "rename TEMPORARY file", "fsync DIRECTORY"}));
  }
}

TEST(ReplaceFile, GivesTheNewFileItsPermissionsBeforeItIsSynced) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  const FileCalls calls;
  replaceFile(directory / "file", "new");
  EXPECT_EQ(shown(calls, {"fchmod", "fsync"}, directory),
            (Lines{"fchmod TEMPORARY", "fsync TEMPORARY", "fsync DIRECTORY"}));
}

TEST(ReplaceFile, ATemporaryIsNobodyElsesToRead) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  setMode(directory / "file", 0600);
  std::set<mode_t> modes;
  const FileCalls calls([&](const FileCall& call, std::size_t) {
    if (call.name == "write" || call.name == "fchmod") modes.insert(modeOf(call.file));
    return 0;
  });
  const mode_t before = ::umask(0);
  replaceFile(directory / "file", "new");
  ::umask(before);
  EXPECT_EQ(modes, std::set<mode_t>{0600});
}

TEST(ReplaceFile, WritesOnAfterAShortWrite) {
  const TemporaryDirectory directory;
  for (const std::size_t longest : {1U, 7U, 999U, 1000U, 1001U}) {
    FileCalls calls;
    calls.shortenWrites(longest);
    replaceFile(directory / "file", bytes(1000));
    EXPECT_EQ(contentOf(directory / "file"), bytes(1000));
    EXPECT_EQ(calls.count("write"), (1000 + longest - 1) / longest);
    EXPECT_EQ(calls.count("fsync"), 2U);
  }
}

TEST(ReplaceFile, GoesOnAfterInterruptions) {
  const TemporaryDirectory directory;
  FileCalls calls(interruptions());
  calls.shortenWrites(400);
  replaceFile(directory / "file", bytes(1000));
  EXPECT_EQ(contentOf(directory / "file"), bytes(1000));
  EXPECT_EQ(calls.count("write"), 6U);
  EXPECT_EQ(calls.count("fsync"), 4U);
}

// Whether a call locks the temporary file, or checks that no other program has removed it before
// that. Without the lock the file is replaced all the same.
bool isOfTheLock(const FileCalls& calls, std::size_t number) {
  const auto& made = calls.made();
  const auto isStatus = [](const FileCall& call) { return call.name == "fstat"; };
  const auto end = made.begin() + static_cast<std::ptrdiff_t>(number);
  return made[number].name == "fcntl" ||
         (isStatus(made[number]) && std::none_of(made.begin(), end, isStatus));
}

// Replaces a file once for each system call, with that call failing with this error.
void failEveryCall(int error, bool exists) {
  for (std::size_t number = 0;; ++number) {
    const TemporaryDirectory directory;
    const path file = directory / "file";
    if (exists) putFile(file, "old");
    FileCalls calls(FileCalls::failAt(number, error));
    calls.shortenWrites(400);
    const std::string failure = replacingError(file, bytes(1000));
    if (number >= calls.made().size()) {
      EXPECT_EQ(failure, "no error");
      EXPECT_EQ(number, calls.count("stat") + calls.count("access") + calls.count("open") +
                            calls.count("write") + calls.count("fchmod") + calls.count("fsync") +
                            calls.count("rename") + calls.count("fcntl") + calls.count("fstat"));
      EXPECT_EQ(number, exists ? 14U : 12U);
      return;
    }
    const FileCall& failed = calls.made()[number];
    SCOPED_TRACE(failed.name + " " + failed.file);
    if (isOfTheLock(calls, number)) {
      EXPECT_EQ(failure, "no error");
      EXPECT_EQ(contentOf(file), bytes(1000));
      EXPECT_EQ(directory.names(), Names{"file"});
      continue;
    }
    const bool isInPlace = failed.file == directory.path();
    EXPECT_EQ(failure, text(isInPlace ? directory.path() : file, error));
    if (exists || isInPlace) {
      EXPECT_EQ(contentOf(file), isInPlace ? bytes(1000) : "old");
      EXPECT_EQ(directory.names(), Names{"file"});
    } else {
      EXPECT_EQ(directory.names(), Names{});
    }
  }
}

TEST(ReplaceFile, AnyFailureLeavesTheOldFileOrTheNewAndNothingElse) {
  const std::size_t descriptors = openDescriptors();
  for (const int error : faults) {
    for (const bool exists : {false, true}) failEveryCall(error, exists);
  }
  EXPECT_EQ(openDescriptors(), descriptors);
}

TEST(ReplaceFile, ADirectoryThatCannotBeSyncedIsNoFailure) {
  const TemporaryDirectory directory;
  const FileCalls calls([&](const FileCall& call, std::size_t) {
    return call.name == "fsync" && call.file == directory.path() ? EINVAL : 0;
  });
  EXPECT_EQ(replacingError(directory / "file"), "no error");
  EXPECT_EQ(calls.count("fsync"), 2U);
}

TEST(ReplaceFile, ATemporaryThatSomebodyLeftIsNotTouched) {
  const TemporaryDirectory directory;
  const std::string left = ".quorvane-" + std::to_string(::getpid()) + "-0.tmp";
  const std::string link = ".quorvane-" + std::to_string(::getpid()) + "-1.tmp";
  putFile(directory / left, "left");
  std::filesystem::create_symlink("elsewhere", directory / link);
  replaceFile(directory / "file", "new");
  EXPECT_EQ(contentOf(directory / "file"), "new");
  EXPECT_EQ(contentOf(directory / left), "left");
  EXPECT_EQ(directory.names(), (Names{"file", left, link}));
}

TEST(ReplaceFile, AKillAtAnyCallLeavesTheOldFileOrTheNew) {
  const TemporaryDirectory directory;
  const path file = directory / "file";
  const std::string oldContent = bytes(3000);
  const std::string newContent = bytes(2000);
  std::vector<bool> replaced;
  for (bool killed = true; killed;) {
    putFile(file, oldContent);
    const std::size_t number = replaced.size();
    const std::string end = inChildProcess([&]() -> std::string {
      FileCalls calls(FileCalls::dieAt(number));
      calls.shortenWrites(700);
      replaceFile(file, newContent);
      return "done";
    });
    killed = end == "signal 9";
    EXPECT_TRUE(killed || end == "done") << end;
    const std::string content = contentOf(file);
    EXPECT_TRUE(content == oldContent || content == newContent) << number;
    replaced.push_back(content == newContent);
  }
  // stat, access, open, lock, fstat, three writes, fchmod, fsync, fstat and rename; open and fsync
  // of the directory.
  EXPECT_EQ(std::count(replaced.begin(), replaced.end(), false), 12);
  EXPECT_EQ(std::count(replaced.begin(), replaced.end(), true), 3);
  EXPECT_TRUE(std::is_sorted(replaced.begin(), replaced.end()));
}

TEST(ReplaceFile, AKillAtAnyMomentLeavesTheOldFileOrTheNew) {
  constexpr int rounds = 200;
  const TemporaryDirectory directory;
  const path file = directory / "file";
  const std::array contents{bytes(30000), bytes(50000)};
  putFile(file, contents[0]);
  for (int round = 0; round < rounds; ++round) {
    Pipe progress;
    ChildProcess child([&]() -> std::string {
      FileCalls calls([&](const FileCall&, std::size_t) {
        return ::write(progress.writing.get(), ".", 1) == 1 ? 0 : EIO;
      });
      calls.shortenWrites(4096);
      for (std::size_t i = 0;; ++i) replaceFile(file, contents[i % 2]);
    });
    for (int i = 0; i < round % 61; ++i) {
      char byte = 0;
      ASSERT_EQ(::read(progress.reading.get(), &byte, 1), 1);
    }
    child.kill();
    ASSERT_EQ(child.end(), "signal 9");
    const std::string content = contentOf(file);
    ASSERT_TRUE(content == contents[0] || content == contents[1]) << content.size();
  }
}

std::string replaceableError(const path& file) {
  return errorText([&] { requireReplaceable(file); });
}

TEST(RequireReplaceable, AgreesWithWhatReplacingWouldMeet) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  putFile(directory / "closed", "old");
  std::filesystem::permissions(directory / "closed", std::filesystem::perms(0444));
  std::filesystem::create_directory(directory / "sealed");
  std::filesystem::permissions(directory / "sealed", std::filesystem::perms(0555));
  const std::vector<std::pair<std::string, std::string>> cases{
      {"new", "no error"},
      {"a/b/new", "no error"},
      {"closed", text(directory / "closed", EACCES)},
      {"sealed/new", text(directory / "sealed", EACCES)},
      {"sealed/a/b/new", text(directory / "sealed", EACCES)},
      {"sealed", text(directory / "sealed", EISDIR)},
  };
  const std::string errors = inChildProcess([&] {
    becomeOrdinaryUser();
    std::string all;
    for (const auto& [name, wanted] : cases) {
      const std::string error = replaceableError(directory / name);
      if (error != wanted) all.append(name).append(" -> ").append(error).append("\n");
    }
    return all;
  });
  EXPECT_EQ(errors, "");
  EXPECT_EQ(replaceableError(directory / "file/below"), text(directory / "file/below", ENOTDIR));
  EXPECT_EQ(directory.names(), (Names{"closed", "file", "sealed"}));
}

TEST(RequireReplaceable, TellsAReadOnlyFileSystem) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  const FileCalls calls(FileCalls::failEach("access", EROFS));
  EXPECT_EQ(replaceableError(directory / "file"), text(directory / "file", EROFS));
  EXPECT_EQ(replaceableError(directory / "new"), text(directory.path(), EROFS));
}

TEST(CreateDirectories, CreatesWhatIsMissing) {
  const TemporaryDirectory directory;
  for (const char* const name : {"a", "a/b", "c/d/e/f", "a/g/h", "i/j/", "./k", "a/../l"}) {
    createDirectories(directory / name);
    EXPECT_TRUE(std::filesystem::is_directory(directory / name)) << name;
  }
  EXPECT_EQ(directory.names(), (Names{"a", "c", "i", "k", "l"}));
}

TEST(CreateDirectories, TakesARelativePath) {
  const TemporaryDirectory directory;
  for (const char* const name : {"a", "./b", "c/d/e"}) {
    EXPECT_EQ(inChildProcess([&]() -> std::string {
                std::filesystem::current_path(directory.path());
                createDirectories(name);
                return "created";
              }),
              "created");
    EXPECT_TRUE(std::filesystem::is_directory(directory / name));
  }
}

TEST(CreateDirectories, OneThatExistsIsLeftAlone) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "content");
  std::filesystem::create_symlink(directory.path(), directory / "link");
  const FileCalls calls;
  for (const path& existing :
       {directory.path(), directory / "link", path("/"), path("."), path()}) {
    createDirectories(existing);
  }
  EXPECT_EQ(calls.count("mkdir"), 0U);
  EXPECT_EQ(contentOf(directory / "file"), "content");
}

TEST(CreateDirectories, OneBelowALinkIsCreatedWhereTheLinkLeads) {
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory / "there");
  std::filesystem::create_symlink("there", directory / "link");
  createDirectories(directory / "link/a/b");
  EXPECT_TRUE(std::filesystem::is_directory(directory / "there/a/b"));
}

TEST(CreateDirectories, ObeysTheUmask) {
  const TemporaryDirectory directory;
  for (const mode_t mask : {0002U, 0022U, 0077U}) {
    const mode_t before = ::umask(mask);
    createDirectories(directory / std::to_string(mask) / "a");
    ::umask(before);
    EXPECT_EQ(modeOf(directory / std::to_string(mask)), 0777 & ~mask);
    EXPECT_EQ(modeOf(directory / std::to_string(mask) / "a"), 0777 & ~mask);
  }
}

TEST(CreateDirectories, RefusesAFileInTheWay) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "content");
  putFifo(directory / "fifo");
  std::filesystem::create_symlink("nothing", directory / "dangling");
  for (const char* const name : {"file", "fifo", "dangling"}) {
    for (const path& wanted :
         {directory / name, directory / name / "a", directory / name / "a/b"}) {
      EXPECT_EQ(errorText([&] { createDirectories(wanted); }),
                text(directory / name, "Not a directory"));
    }
  }
  EXPECT_EQ(contentOf(directory / "file"), "content");
  EXPECT_EQ(directory.names(), (Names{"file", "fifo", "dangling"}));
}

TEST(CreateDirectories, SyncsEachDirectoryThatGetsANewOne) {
  const TemporaryDirectory directory;
  const FileCalls calls;
  createDirectories(directory / "a/b/c");
  EXPECT_EQ(
      shown(calls, {"mkdir", "fsync"}, directory),
      (Lines{"mkdir a", "fsync DIRECTORY", "mkdir a/b", "fsync a", "mkdir a/b/c", "fsync a/b"}));
}

TEST(CreateDirectories, AnotherProgramMayBeFaster) {
  const TemporaryDirectory directory;
  const FileCalls calls([](const FileCall& call, std::size_t) {
    if (call.name == "mkdir") std::filesystem::create_directory(call.file);
    return 0;
  });
  createDirectories(directory / "a/b");
  EXPECT_TRUE(std::filesystem::is_directory(directory / "a/b"));
}

TEST(CreateDirectories, NamesTheDirectoryInEveryFailure) {
  for (const int error : faults) {
    for (std::size_t number = 0;; ++number) {
      const TemporaryDirectory directory;
      const FileCalls calls(FileCalls::failAt(number, error));
      const std::string failure = errorText([&] { createDirectories(directory / "a/b"); });
      if (number >= calls.made().size()) {
        EXPECT_EQ(failure, "no error");
        EXPECT_EQ(number, 6U);
        break;
      }
      EXPECT_EQ(failure, text(calls.made()[number].file, error));
      EXPECT_EQ(calls.made().size(), number + 1);
    }
  }
}

TEST(KeepBeside, GivesAFurtherName) {
  const TemporaryDirectory directory;
  const path file = directory / "file.json";
  for (const char* const name : {"file.json.kept", "file.json.kept-2", "file.json.kept-3"}) {
    replaceFile(file, name);
    EXPECT_EQ(keepBeside(file, "kept"), directory / name);
    EXPECT_EQ(contentOf(file), name);
  }
  for (const char* const name : {"file.json.kept", "file.json.kept-2", "file.json.kept-3"}) {
    EXPECT_EQ(contentOf(directory / name), name);
  }
  EXPECT_EQ(directory.names().size(), 4U);
}

TEST(KeepBeside, WhatIsKeptOutlivesAReplacement) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "old");
  const path kept = keepBeside(directory / "file", "kept");
  replaceFile(directory / "file", "new");
  EXPECT_EQ(contentOf(directory / "file"), "new");
  EXPECT_EQ(contentOf(kept), "old");
}

TEST(KeepBeside, TakesARelativePath) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "content");
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              std::filesystem::current_path(directory.path());
              return keepBeside("file", "kept");
            }),
            "file.kept");
  EXPECT_EQ(directory.names(), (Names{"file", "file.kept"}));
}

TEST(KeepBeside, FollowsALink) {
  const TemporaryDirectory directory;
  std::filesystem::create_directory(directory / "there");
  putFile(directory / "there/file", "content");
  std::filesystem::create_symlink("there/file", directory / "link");
  EXPECT_EQ(keepBeside(directory / "link", "kept"), directory / "there/file.kept");
  EXPECT_EQ(contentOf(directory / "there/file.kept"), "content");
  EXPECT_EQ(directory.names(), (Names{"there", "link"}));
}

TEST(KeepBeside, ANameThatIsTakenByAnythingIsLeftAlone) {
  const TemporaryDirectory directory;
  putFile(directory / "file", "content");
  std::filesystem::create_directory(directory / "file.kept");
  std::filesystem::create_symlink("nothing", directory / "file.kept-2");
  EXPECT_EQ(keepBeside(directory / "file", "kept"), directory / "file.kept-3");
  EXPECT_EQ(directory.names(), (Names{"file", "file.kept", "file.kept-2", "file.kept-3"}));
}

TEST(KeepBeside, AFileThatCannotBeLinkedIsCopied) {
  for (const int error : {EPERM, EOPNOTSUPP, ENOSYS, EMLINK}) {
    for (const int moveError : {0, EINVAL, ENOSYS}) {
      const TemporaryDirectory directory;
      const FileCalls calls([&](const FileCall& call, std::size_t) {
        if (call.name == "link") return error;
        return call.name == "renameat2" ? moveError : 0;
      });
      for (const char* const name : {"file.kept", "file.kept-2", "file.kept-3"}) {
        putFile(directory / "file", name);
        setMode(directory / "file", 0640);
        EXPECT_EQ(keepBeside(directory / "file", "kept"), directory / name);
        EXPECT_EQ(contentOf(directory / name), name);
        EXPECT_EQ(modeOf(directory / name), 0640U);
        EXPECT_EQ(contentOf(directory / "file"), name);
      }
      EXPECT_EQ(directory.names(), (Names{"file", "file.kept", "file.kept-2", "file.kept-3"}));
    }
  }
}

TEST(KeepBeside, AFileOfAnotherOwnerStaysInItsPlace) {
  if (::geteuid() != 0) return;  // only root can give files away
  const TemporaryDirectory directory;
  const path file = directory / "file";
  putFile(file, "root's");
  setMode(file, 0666);
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              becomeOrdinaryUser();
              // As if the kernel protected hard links (fs.protected_hardlinks).
              const FileCalls calls(FileCalls::failEach("link", EPERM));
              return keepBeside(file, "kept").filename();
            }),
            "file.kept");
  EXPECT_EQ(statusOf(file).st_uid, 0U);
  EXPECT_EQ(contentOf(file), "root's");
  EXPECT_EQ(contentOf(directory / "file.kept"), "root's");
}

TEST(KeepBeside, SyncsTheDirectory) {
  for (const bool links : {true, false}) {
    const TemporaryDirectory directory;
    putFile(directory / "file", "content");
    const FileCalls calls(links ? FileCalls::pass : FileCalls::failEach("link", EPERM));
    keepBeside(directory / "file", "kept");
    EXPECT_EQ(shown(calls, {"link", "renameat2", "fsync"}, directory),
              links ? (Lines{"link file file.kept", "fsync DIRECTORY"})
                    : (Lines{"link file file.kept", "fsync TEMPORARY",
                             "renameat2 TEMPORARY file.kept", "fsync DIRECTORY"}));
  }
}

TEST(KeepBeside, AFailureLosesNothing) {
  for (const int error : faults) {
    for (const bool links : {true, false}) {
      for (const char* const failing :
           {"open", "stat", "fstat", "read", "write", "fsync", "fchmod", "renameat2"}) {
        const TemporaryDirectory directory;
        const path file = directory / "file";
        putFile(file, "content");
        const FileCalls calls([&](const FileCall& call, std::size_t) {
          if (call.name == "link") return links ? error : EPERM;
          return call.name == failing ? error : 0;
        });
        EXPECT_EQ(errorText([&] { keepBeside(file, "kept"); }), text(file, error));
        EXPECT_EQ(contentOf(file), "content");
        EXPECT_EQ(directory.names(), Names{"file"});
      }
    }
  }
}

TEST(KeepBeside, RefusesWhatIsMissing) {
  const TemporaryDirectory directory;
  EXPECT_EQ(errorText([&] { keepBeside(directory / "file", "kept"); }),
            text(directory / "file", "No such file or directory"));
  EXPECT_EQ(directory.names(), Names{});
}

}  // namespace
}  // namespace quorvane
