#include "ui/desktop/desktop_panels.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStandardPaths>
#include <system_error>
#include <utility>

#include "ui/desktop/file_filter.h"
#include "ui/desktop/portal_chooser.h"
#include "ui/kit/text.h"

namespace quorvane {
namespace {

std::filesystem::path pathOf(const QString& name) { return QFile::encodeName(name).toStdString(); }

QString pathText(const std::filesystem::path& path) {
  return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

bool isFolder(const std::filesystem::path& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

// The portal's identifier for a window. Empty on Wayland, where Qt does not provide one.
QString handleOf(const QWidget* window) {
  if (window == nullptr || QGuiApplication::platformName() != QLatin1String("xcb")) return {};
  return QStringLiteral("x11:") + QString::number(window->winId(), 16);
}

QVariantMap portalOptions(const FilePanels::Request& request, const std::filesystem::path& folder) {
  const QByteArray bytes = QByteArray::fromStdString(folder.string());
  QVariantMap options{
      {QStringLiteral("accept_label"), text(request.button)},
      {QStringLiteral("modal"), true},
      {QStringLiteral("filters"), QVariant::fromValue(FileFilter::of(request.content))},
      {QStringLiteral("current_folder"), QByteArray(bytes + '\0')}};
  if (!request.suggestedName.empty()) {
    options[QStringLiteral("current_name")] = text(request.suggestedName);
  }
  return options;
}

QStringList texts(const QList<FileFilter>& filters) {
  QStringList texts;
  for (const FileFilter& filter : filters) texts.append(filter.text());
  return texts;
}

QFileDialog* makeDialog(QWidget* window, const FilePanels::Request& request,
                        const std::filesystem::path& folder) {
  auto* const dialog = new QFileDialog(window, text(request.title), pathText(folder));
  dialog->setNameFilters(texts(FileFilter::of(request.content)));
  dialog->setLabelText(QFileDialog::Accept, text(request.button));
  return dialog;
}

void prepareToSave(QFileDialog& dialog, const QString& name) {
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setDefaultSuffix(QFileInfo(name).suffix());
  dialog.selectFile(name);
}

}  // namespace

DesktopPanels::DesktopPanels(std::optional<QDBusConnection> bus, std::chrono::milliseconds timeout)
    : bus_(std::move(bus)), timeout_(timeout) {
  if (bus_) FileFilter::registerOnBus();
}

// Open panels are owned by the window or by this object; delete both kinds.
DesktopPanels::~DesktopPanels() {
  for (const auto& [kind, panel] : open_) delete panel;
}

void DesktopPanels::chooseDestination(const Request& request, Chosen chosen) {
  open(Purpose::destination, request, chosen);
}

void DesktopPanels::chooseFile(const Request& request, Chosen chosen) {
  open(Purpose::file, request, chosen);
}

void DesktopPanels::open(Purpose purpose, const Request& request, const Chosen& chosen) {
  const Kind kind{purpose, request.content};
  if (QObject* const panel = open_[kind]) {
    auto* const dialog = qobject_cast<QWidget*>(panel);
    if (dialog == nullptr) return;
    dialog->raise();
    dialog->activateWindow();
  } else if (bus_) {
    openPortal(kind, request, chosen);
  } else {
    openDialog(kind, request, chosen);
  }
}

void DesktopPanels::openPortal(const Kind& kind, const Request& request, const Chosen& chosen) {
  const QString method =
      kind.first == Purpose::file ? QStringLiteral("OpenFile") : QStringLiteral("SaveFile");
  auto* const chooser = new PortalChooser(
      *bus_, {method, handleOf(window_), text(request.title), portalOptions(request, folder())},
      timeout_);
  open_[kind] = chooser;
  connect(chooser, &PortalChooser::chosen, this, [=, this](const std::filesystem::path& file) {
    end(kind);
    took(file, chosen);
  });
  connect(chooser, &PortalChooser::dismissed, this, [=, this] { end(kind); });
  connect(chooser, &PortalChooser::unavailable, this, [=, this] {
    end(kind);
    openDialog(kind, request, chosen);
  });
}

void DesktopPanels::openDialog(const Kind& kind, const Request& request, const Chosen& chosen) {
  QFileDialog* const dialog = makeDialog(window_, request, folder());
  if (kind.first == Purpose::file) {
    dialog->setFileMode(QFileDialog::ExistingFile);
  } else {
    prepareToSave(*dialog, text(request.suggestedName));
  }
  open_[kind] = dialog;
  connect(dialog, &QFileDialog::fileSelected, this, [=, this](const QString& file) {
    end(kind);
    took(pathOf(file), chosen);
  });
  connect(dialog, &QDialog::rejected, this, [=, this] { end(kind); });
  dialog->open();
}

// Deletes the panel later, since it may be the sender of the current signal. Another panel of this
// kind may be opened at once.
void DesktopPanels::end(const Kind& kind) {
  QObject* const panel = open_[kind];
  if (panel == nullptr) return;
  open_.erase(kind);
  panel->disconnect(this);
  panel->deleteLater();
}

void DesktopPanels::took(const std::filesystem::path& file, const Chosen& chosen) {
  lastFolder_ = file.parent_path();
  chosen(file);
}

std::filesystem::path DesktopPanels::folder() const {
  if (isFolder(lastFolder_)) return lastFolder_;
  auto documents = pathOf(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  if (isFolder(documents)) return documents;
  return pathOf(QStandardPaths::writableLocation(QStandardPaths::HomeLocation));
}

}  // namespace quorvane
