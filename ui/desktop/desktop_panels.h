#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <utility>

#include "app/file_panels.h"

namespace quorvane {

// The desktop's file dialogs if its portal offers them, else Qt's. One dialog of each kind is open
// at a time: a second request raises a dialog of Qt's, and does nothing for one of the portal's.
//
// The first dialog starts in the documents folder, later ones in the folder of the last choice.
class DesktopPanels final : public QObject, public FilePanels {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds defaultTimeout{5000};

  // `timeout` is how long the portal may take to start and accept a request. Without a bus there is
  // no portal.
  explicit DesktopPanels(std::optional<QDBusConnection> bus,
                         std::chrono::milliseconds timeout = defaultTimeout);
  ~DesktopPanels() override;
  DesktopPanels(const DesktopPanels&) = delete;
  DesktopPanels& operator=(const DesktopPanels&) = delete;

  // Sets the parent window of the panels. It may be destroyed before them.
  void setWindow(QWidget* window) { window_ = window; }

  void chooseDestination(const Request& request, Chosen chosen) override;
  void chooseFile(const Request& request, Chosen chosen) override;

 private:
  enum class Purpose { destination, file };
  using Kind = std::pair<Purpose, Content>;

  void open(Purpose purpose, const Request& request, const Chosen& chosen);
  void openPortal(const Kind& kind, const Request& request, const Chosen& chosen);
  void openDialog(const Kind& kind, const Request& request, const Chosen& chosen);
  void end(const Kind& kind);
  void took(const std::filesystem::path& file, const Chosen& chosen);
  std::filesystem::path folder() const;

  const std::optional<QDBusConnection> bus_;
  const std::chrono::milliseconds timeout_;
  QPointer<QWidget> window_;
  std::map<Kind, QPointer<QObject>> open_;
  std::filesystem::path lastFolder_;
};

}  // namespace quorvane
