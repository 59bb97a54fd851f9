#include "ui/base/base_row.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <QApplication>
#include <QGridLayout>
#include <utility>

#include "session/candidates.h"
#include "support/text.h"
#include "ui/base/base_text.h"
#include "ui/kit/button.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/model/view.h"

namespace quorvane {
namespace {

// A short name that is unique among the bases.
std::string spokenName(const HIDDeviceInfo& base) {
  return fmt::format("{}, {}", nameOf(base),
                     oneLine(fmt::format("{}", fmt::join(namesOf(base), ", "))));
}

QString linkText(AppModel::Link link) {
  switch (link) {
    case AppModel::Link::none:
      return {};
    case AppModel::Link::opening:
      return QStringLiteral("Connecting…");
    case AppModel::Link::open:
      return QStringLiteral("Connected");
  }
  Q_UNREACHABLE();
}

}  // namespace

BaseRow::BaseRow(HIDDeviceInfo base, QWidget* parent)
    : QWidget(parent),
      base_(std::move(base)),
      detail_(selectableLabel(QStringLiteral("baseDetail"))),
      link_(PlainText::label()),
      connect_(new Button(QStringLiteral("Connect"))) {
  const QString place = text(namesOf(base_).back());
  setObjectName(QStringLiteral("base ") + place);
  setAccessibleName(text(spokenName(base_)));
  auto* const name = new ElidedLabel(Qt::ElideRight);
  name->setObjectName(QStringLiteral("attachedBaseName"));
  name->setFont(Metrics::font(Metrics::Type::value));
  name->setText(text(nameOf(base_)));
  detail_->setFont(Metrics::font(Metrics::Type::callout));
  detail_->setForegroundRole(QPalette::Dark);
  detail_->setText(text(detailOf(base_)));
  link_->setObjectName(QStringLiteral("baseLink"));
  link_->setForegroundRole(QPalette::Dark);
  connect_->setObjectName(QStringLiteral("connect ") + place);
  connect_->setAccessibleName(QStringLiteral("Connect, ") + text(spokenName(base_)));
  connect(connect_, &Button::clicked, this, [this] {
    isAskedFor_ = true;
    emit chosen();
  });

  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(Metrics::cardInset, Metrics::cardLinePadding, Metrics::cardInset,
                           Metrics::cardLinePadding);
  grid->setHorizontalSpacing(Metrics::gap);
  grid->setVerticalSpacing(0);
  grid->setColumnStretch(0, 1);
  grid->addWidget(name, 0, 0);
  grid->addWidget(detail_, 1, 0);
  grid->addWidget(connect_, 0, 1, 2, 1, Qt::AlignVCenter);
  grid->addWidget(link_, 0, 2, 2, 1, Qt::AlignVCenter);
}

void BaseRow::show(AppModel::Link link, const QString& whyNot) {
  setAvailable(*connect_, whyNot);
  connect_->setVisible(link == AppModel::Link::none);
  link_->setText(linkText(link));
  link_->setVisible(link != AppModel::Link::none);
  const QString state = link_->text().isEmpty() ? QStringLiteral("Not connected") : link_->text();
  detail_->setAccessibleName(
      QStringLiteral("%1, %2, %3").arg(text(nameOf(base_)), detail_->text(), state));
  // The pressed button is hidden now: keep the focus in its row.
  if (isAskedFor_ && link == AppModel::Link::open && View::isFocusFree()) {
    focusDetail();
  }
  if (link == AppModel::Link::open || whyNot.isEmpty()) isAskedFor_ = false;
}

void BaseRow::focusDetail() { detail_->setFocus(Qt::OtherFocusReason); }

}  // namespace quorvane
