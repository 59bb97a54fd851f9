#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// A call of the program to the kernel that concerns a file.
struct FileCall {
  std::string name;  // "open", "fsync", ...
  std::string file;
  std::string newName;  // of the calls that give one
};

// Sees the calls of the program's own code while it lives, not those inside libraries, and may have
// them fail. One at a time.
class FileCalls {
 public:
  // Asked before each call, the first being number 0. Gives the errno that the call fails with
  // instead of being made, or 0 to let it pass. What it calls itself is not seen.
  using Verdict = std::function<int(const FileCall& call, std::size_t number)>;

  static int pass(const FileCall& call, std::size_t number);
  static Verdict failAt(std::size_t number, int error);
  static Verdict failEach(std::string_view name, int error);
  static Verdict dieAt(std::size_t number);  // by SIGKILL

  explicit FileCalls(Verdict verdict = pass);
  ~FileCalls();
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;

  // A write takes no more than that from now on.
  void shortenWrites(std::size_t longest) { longestWrite_ = longest; }
  std::size_t longestWrite() const { return longestWrite_; }

  const std::vector<FileCall>& made() const { return made_; }
  std::size_t count(std::string_view name) const;

  // For the wrapped calls.
  static FileCalls* watching();
  int judge(FileCall call);

 private:
  Verdict verdict_;
  std::vector<FileCall> made_;
  std::size_t longestWrite_ = std::numeric_limits<std::size_t>::max();
};

}  // namespace quorvane
