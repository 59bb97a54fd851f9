#include "ui/shell/about_dialog.h"

#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "support/version.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"

// Resources in a static library must be initialised explicitly. The macro does not work inside a
// namespace.
static void loadLicenses() { Q_INIT_RESOURCE(ui); }

namespace quorvane {
namespace {

constexpr int licenseColumns = 86;  // 80, the margins and the scroll bar
constexpr int licenseLines = 16;
constexpr int aboutGap = 12;

QString embedded(const QString& name) {
  loadLicenses();
  QFile file(QStringLiteral(":/licenses/") + name);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QString licenses() {
  return QStringLiteral(
             "%1\n\nThe window uses Qt %2 under the GNU Lesser General Public License, version "
             "3.\n%3")
      .arg(embedded(QStringLiteral("LICENSE")), QString::fromLatin1(qVersion()),
           embedded(QStringLiteral("notices.txt")));
}

QPlainTextEdit* licenseView() {
  auto* const view = new QPlainTextEdit;
  view->setObjectName(QStringLiteral("licenses"));
  view->setAccessibleName(QStringLiteral("Licenses"));
  view->setReadOnly(true);
  view->setTabChangesFocus(true);
  view->setFont(Metrics::font(Metrics::Type::fixed));
  view->setPlainText(licenses());
  const QFontMetrics metrics(view->font());
  view->setMinimumSize(metrics.averageCharWidth() * licenseColumns,
                       metrics.lineSpacing() * licenseLines);
  return view;
}

}  // namespace

AboutDialog::AboutDialog(QWidget* parent) : Dialog(QStringLiteral("About Quorvane"), parent) {
  setObjectName(QStringLiteral("aboutDialog"));
  QLabel* const build =
      PlainText::label(QStringLiteral("Version %1 (%2)").arg(text(version()), text(commit())));
  build->setObjectName(QStringLiteral("aboutVersion"));
  build->setForegroundRole(QPalette::Dark);
  content().addWidget(build);
  content().addSpacing(aboutGap);
  content().addWidget(licenseView());
  auto* const close = new Button(QStringLiteral("Close"));
  close->setObjectName(QStringLiteral("closeAboutButton"));
  close->setDefault(true);
  addButton(close, false);
  close->setFocus();
}

}  // namespace quorvane
