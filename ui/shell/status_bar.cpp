#include "ui/shell/status_bar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "app/messages.h"
#include "support/text.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/spinner.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/text_link.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int sideInset = 12;
constexpr int errorMark = 14;
constexpr int lineLeft = sideInset + Metrics::dotSize + Metrics::gap;

// Whether the status line is the newest line of the log, and that is an error.
bool tellsError(const AppModel& model) {
  return !model.log().empty() && model.log().back().isError &&
         model.log().back().text == model.statusLine();
}

}  // namespace

StatusBar::StatusBar(AppModel& model, QWidget* parent)
    : View(model, parent),
      line_(new ElidedLabel(Qt::ElideMiddle)),
      undo_(new TextLink(QStringLiteral("Undo"))),
      compare_(new TextLink(QStringLiteral("Compare…"))),
      progress_(PlainText::label()),
      spinner_(new Spinner) {
  setObjectName(QStringLiteral("statusBar"));
  line_->setObjectName(QStringLiteral("statusLine"));
  line_->setFont(Metrics::font(Metrics::Type::callout));
  line_->setForegroundRole(QPalette::Dark);
  undo_->setObjectName(QStringLiteral("undoDeleteLink"));
  PlainText::setToolTip(*undo_, QStringLiteral("Bring the deleted preset back (Ctrl+Z)"));
  undo_->hide();
  connect(undo_, &TextLink::clicked, this, [this] { this->model().undoPresets(); });
  compare_->setObjectName(QStringLiteral("compareImportedLink"));
  PlainText::setToolTip(*compare_, QStringLiteral("Compare the imported preset with the base"));
  compare_->hide();
  connect(compare_, &TextLink::clicked, this, [this] {
    if (const auto preset = this->model().importedPreset()) emit compareAsked(*preset);
  });
  progress_->setObjectName(QStringLiteral("progress"));
  progress_->setFont(Metrics::font(Metrics::Type::callout));
  progress_->setForegroundRole(QPalette::Dark);
  progress_->hide();
  spinner_->setObjectName(QStringLiteral("busySpinner"));
  spinner_->setAccessibleName(QStringLiteral("Busy"));
  spinner_->hide();
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(visualMargins(*this, {lineLeft, 0, sideInset, 0}));
  row->setSpacing(Metrics::gap);
  row->addWidget(line_);
  row->addWidget(undo_);
  row->addWidget(compare_);
  row->addStretch(1);
  row->addWidget(progress_);
  row->addWidget(spinner_);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize StatusBar::sizeHint() const {
  return {0, Metrics::atLeast(Metrics::statusBarHeight, line_->font())};
}

void StatusBar::render() {
  renderLine();
  renderUndo();
  renderCompare();
  spinner_->setVisible(model().busy());
  const auto& progress = model().progress();
  if (progress) {
    progress_->setText(QStringLiteral("%1 of %2").arg(progress->done).arg(progress->total));
  }
  progress_->setVisible(progress.has_value());
  update();
}

// An error has a triangle and the error's ink until the next line, and is announced at once.
void StatusBar::renderLine() {
  const QString line = text(model().statusLine());
  const bool isError = tellsError(model());
  if (line == line_->text() && isError == isError_) return;
  isError_ = isError;
  line_->setText(line);
  line_->setForegroundRole(isError ? QPalette::BrightText : QPalette::Dark);
  line_->setAccessibleName(isError ? QStringLiteral("Error, %1").arg(line) : line);
  const int left = lineLeft + (isError ? errorMark + Metrics::gap : 0);
  layout()->setContentsMargins(visualMargins(*this, {left, 0, sideInset, 0}));
  QAccessibleEvent change(line_, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&change);
  if (!isError) return;
  QAccessibleEvent alert(line_, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

// The link is visible until the next status line.
void StatusBar::renderUndo() {
  const auto& deleted = model().deletedPreset();
  undo_->setVisible(deleted && model().statusLine() == Messages::presetDeleted(deleted->name));
  if (deleted) {
    undo_->setAccessibleName(
        QStringLiteral("Undo, bring back %1").arg(text(oneLine(deleted->name))));
  }
}

// The same, after an import of one preset.
void StatusBar::renderCompare() {
  const auto imported = model().importedPreset();
  compare_->setVisible(imported.has_value());
  if (imported) {
    compare_->setAccessibleName(QStringLiteral("Compare %1").arg(text(oneLine(imported->name))));
  }
}

void StatusBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.window);
  drawEdge(painter, rect(), Qt::TopEdge, t.line);
  const QRectF dot(sideInset, (height() - Metrics::dotSize) / 2.0, Metrics::dotSize,
                   Metrics::dotSize);
  drawDot(painter, visualRect(*this, dot), model().isConnected() ? t.ok : t.idle);
  if (!isError_) return;
  const QRectF mark(lineLeft, (height() - errorMark) / 2.0, errorMark, errorMark);
  drawSymbol(painter, visualRect(*this, mark).topLeft(),
             QStringLiteral("exclamationmark.triangle.fill"), errorMark, t.error);
}

}  // namespace quorvane
