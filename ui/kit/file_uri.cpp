#include "ui/kit/file_uri.h"

#include <QByteArray>

namespace quorvane::FileURI {
namespace {

constexpr auto scheme = "file:";
constexpr auto unreservedInPaths = "/!$&'()*+,:=@";

bool isThisMachine(const QByteArray& host) {
  return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0;
}

}  // namespace

QString of(const std::filesystem::path& file) {
  const QByteArray bytes = QByteArray::fromStdString(file.string());
  return QStringLiteral("file://") +
         QString::fromLatin1(bytes.toPercentEncoding(unreservedInPaths));
}

std::optional<std::filesystem::path> toPath(const QString& uri) {
  if (!uri.startsWith(QLatin1String(scheme), Qt::CaseInsensitive)) return std::nullopt;
  QByteArray rest = uri.toUtf8().mid(qsizetype(qstrlen(scheme)));
  if (rest.startsWith("//")) {
    const qsizetype path = rest.indexOf('/', 2);
    if (path < 0 || !isThisMachine(rest.mid(2, path - 2))) return std::nullopt;
    rest.remove(0, path);
  }
  if (!rest.startsWith('/') || rest.contains('?') || rest.contains('#')) return std::nullopt;
  const QByteArray path = QByteArray::fromPercentEncoding(rest);
  if (path.contains('\0')) return std::nullopt;
  return std::filesystem::path(path.toStdString());
}

}  // namespace quorvane::FileURI
