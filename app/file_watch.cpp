#include "app/file_watch.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileSystemWatcher>
#include <QHash>
#include <QPointer>
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

// The watcher of all FileWatch objects, and how many of them want each path. The application object
// owns it: it is not destroyed earlier, because the kernel takes about 17 ms to close a descriptor
// of inotify.
class PathWatcher final : public QFileSystemWatcher {
 public:
  static PathWatcher& shared() {
    static QPointer<PathWatcher> watcher;
    if (!watcher) watcher = new PathWatcher(QCoreApplication::instance());
    return *watcher;
  }

  // Also watches a path again that was watched already: a replaced file is a new file of the same
  // name.
  void watch(const QString& path) {
    if (!files().contains(path) && !directories().contains(path)) addPath(path);
  }

  void want(const QString& path) { ++wanted_[path]; }

  void release(const QString& path) {
    if (--wanted_[path] > 0) return;
    wanted_.remove(path);
    removePath(path);
  }

 private:
  using QFileSystemWatcher::QFileSystemWatcher;

  QHash<QString, int> wanted_;
};

}  // namespace

FileWatch::FileWatch(path file) : file_(std::move(file)) {
  pause_.setSingleShot(true);
  pause_.setInterval(eventPause);
  connect(&pause_, &QTimer::timeout, this, &FileWatch::tell);
  const auto wait = [this](const QString& path) {
    if (watched_.contains(path) && !pause_.isActive()) pause_.start();
  };
  connect(&PathWatcher::shared(), &QFileSystemWatcher::directoryChanged, this, wait);
  connect(&PathWatcher::shared(), &QFileSystemWatcher::fileChanged, this, wait);
  watchAgain();
}

FileWatch::~FileWatch() {
  for (const QString& each : watched_) PathWatcher::shared().release(each);
}

void FileWatch::watchAgain() {
  QStringList wanted{nameOf(closestDirectory(file_))};
  const QString target = nameOf(closestDirectory(targetOf(file_)));
  if (target != wanted.front()) wanted.append(target);
  if (isThere(file_)) wanted.append(nameOf(file_));
  for (const QString& each : wanted) PathWatcher::shared().want(each);
  for (const QString& each : std::exchange(watched_, wanted)) PathWatcher::shared().release(each);
  for (const QString& each : wanted) PathWatcher::shared().watch(each);
}

// Renews the watches first, so that later events cause another signal.
void FileWatch::tell() {
  watchAgain();
  emit touched();
}

}  // namespace quorvane
