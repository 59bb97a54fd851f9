#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>
#include <filesystem>

namespace quorvane {

// Tells that something may have happened to a file: it was created, replaced, written to or
// removed, or its directory appeared. Several events within a tenth of a second are told once, at
// the end of it. Lives on the thread that made it, which needs an event loop.
class FileWatch final : public QObject {
  Q_OBJECT

 public:
  explicit FileWatch(std::filesystem::path file);

 signals:
  // The file may be another one now, or the same.
  void touched();

 private:
  // Watches what there is by now: the file, the directory that it is in and the one that a symbolic
  // link leads to, or the closest directory above that exists.
  void watchAgain();
  void tell();

  const std::filesystem::path file_;
  QFileSystemWatcher watcher_;
  QTimer pause_;
};

}  // namespace quorvane
