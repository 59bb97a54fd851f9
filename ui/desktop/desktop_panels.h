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

// The desktop's own file dialogs where its portal offers them, else the toolkit's. One of each kind
// is open at a time: asking again brings it to the front, where that is ours to do.
//
// They start in the documents folder, then in that of the file chosen last.
class DesktopPanels final : public QObject, public FilePanels {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds defaultTimeout{5000};

  // `timeout` is for the portal to come up and to take a request; without a bus there is none.
  explicit DesktopPanels(std::optional<QDBusConnection> bus,
                         std::chrono::milliseconds timeout = defaultTimeout);
  ~DesktopPanels() override;
  DesktopPanels(const DesktopPanels&) = delete;
  DesktopPanels& operator=(const DesktopPanels&) = delete;

  // The window that the panels belong to from now on. It may go before them.
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
