#include "app/file_watch.h"

#include <QFile>
#include <chrono>
#include <system_error>
#include <utility>

#include "support/file_system.h"

namespace quorvane {
namespace {

using std::filesystem::path;

constexpr std::chrono::milliseconds eventPause(100);

QString nameOf(const path& file) { return QFile::decodeName(file.c_str()); }

bool isThere(const path& file) {
  std::error_code unknown;
  return std::filesystem::exists(file, unknown);
}

// The directory of a file, or the closest one above that exists.
path closestDirectory(const path& file) {
  path directory = std::filesystem::absolute(file).parent_path();
  while (directory.has_relative_path() && !isThere(directory)) directory = directory.parent_path();
  return directory;
}

// The target of a chain of symbolic links, which need not exist.
path targetOf(const path& file) {
  try {
    return linkTarget(file);
  } catch (const FileError&) {
    return file;
  }
}

}  // namespace

FileWatch::FileWatch(path file) : file_(std::move(file)) {
  pause_.setSingleShot(true);
  pause_.setInterval(eventPause);
  connect(&pause_, &QTimer::timeout, this, &FileWatch::tell);
  const auto wait = [this] {
    if (!pause_.isActive()) pause_.start();
  };
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, wait);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, wait);
  watchAgain();
}

void FileWatch::watchAgain() {
  QStringList wanted{nameOf(closestDirectory(file_))};
  const QString target = nameOf(closestDirectory(targetOf(file_)));
  if (target != wanted.front()) wanted.append(target);
  if (isThere(file_)) wanted.append(nameOf(file_));
  QStringList watched = watcher_.directories() + watcher_.files();
  for (const QString& each : wanted) {
    // A replaced file is a new file of the same name, no longer watched: watch it again.
    if (!watched.removeOne(each)) watcher_.addPath(each);
  }
  if (!watched.isEmpty()) watcher_.removePaths(watched);
}

// Renews the watches first, so that later events cause another signal.
void FileWatch::tell() {
  watchAgain();
  emit touched();
}

}  // namespace quorvane
