#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace quorvane {

// A system call that concerns a file.
struct FileCall {
  std::string name;  // "open", "fsync", ...
  std::string file;
  std::string newName;  // of link, rename and renameat2
};

// RAII: records the system calls of the program's own code, not those of libraries, and can make
// them fail. At most one instance at a time.
class FileCalls {
 public:
  // Called before each system call, with its number from 0. Returns the errno that the call fails
  // with instead of being made, or 0 to make it. System calls of the verdict itself are not
  // recorded.
  using Verdict = std::function<int(const FileCall& call, std::size_t number)>;

  static int pass(const FileCall& call, std::size_t number);
  static Verdict failAt(std::size_t number, int error);
  static Verdict failEach(std::string_view name, int error);
  static Verdict dieAt(std::size_t number);  // by SIGKILL

  explicit FileCalls(Verdict verdict = pass);
  ~FileCalls();
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;

  // From now on a write writes at most this many bytes.
  void shortenWrites(std::size_t longest) { longestWrite_ = longest; }
  std::size_t longestWrite() const { return longestWrite_; }

  const std::vector<FileCall>& made() const { return made_; }
  std::size_t count(std::string_view name) const;

  // Used by the wrapped system calls only.
  static FileCalls* watching();
  int judge(FileCall call);

 private:
  Verdict verdict_;
  std::vector<FileCall> made_;
  std::size_t longestWrite_ = std::numeric_limits<std::size_t>::max();
};

}  // namespace quorvane
