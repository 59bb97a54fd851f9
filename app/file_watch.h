#pragma once

#include <QObject>
#include <QStringList>
#include <QTimer>
#include <filesystem>

namespace quorvane {

// Emits touched() when a file may have been created, replaced, written to or removed, or when its
// directory appears. Debounced: events within 100 ms cause one signal, at the end of that time.
// Main thread only, with an event loop; the application object must outlive it.
class FileWatch final : public QObject {
  Q_OBJECT

 public:
  explicit FileWatch(std::filesystem::path file);
  ~FileWatch() override;
  FileWatch(const FileWatch&) = delete;
  FileWatch& operator=(const FileWatch&) = delete;

 signals:
  // The file may have changed; it may also be the same.
  void touched();

 private:
  // Renews the watches: on the file, on its directory and on that of a symbolic link's target, or
  // on the closest existing parent directory.
  void watchAgain();
  void tell();

  const std::filesystem::path file_;
  QStringList watched_;
  QTimer pause_;
};

}  // namespace quorvane
