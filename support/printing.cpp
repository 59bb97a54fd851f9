#include "support/printing.h"

#include <atomic>
#include <cerrno>

#include "support/text.h"

namespace quorvane {
namespace {

// The errno of the first failure: the stream itself keeps only an error flag.
std::atomic<int> standardOutputError = 0;

void noteFailure(std::FILE* stream) {
  const int error = errno != 0 ? errno : EIO;
  int none = 0;
  if (stream == stdout) standardOutputError.compare_exchange_strong(none, error);
}

}  // namespace

void writeTo(std::FILE* stream, std::string_view bytes) {
  errno = 0;
  if (std::fwrite(bytes.data(), 1, bytes.size(), stream) != bytes.size()) noteFailure(stream);
}

void flush(std::FILE* stream) {
  errno = 0;
  if (std::fflush(stream) != 0) noteFailure(stream);
}

void printLinesTo(std::FILE* stream, std::string_view lines) { writeTo(stream, safeLines(lines)); }

int finishStandardOutput() {
  flush(stdout);
  if (std::ferror(stdout) != 0) noteFailure(stdout);
  return standardOutputError;
}

}  // namespace quorvane
