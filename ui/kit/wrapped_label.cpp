#include "ui/kit/wrapped_label.h"

#include <QLabel>

#include "ui/kit/plain_text.h"

namespace quorvane {

QLabel* wrappedLabel(const char* objectName, Metrics::Type type, QPalette::ColorRole role) {
  QLabel* const label = PlainText::label();
  label->setObjectName(QString::fromLatin1(objectName));
  label->setFont(Metrics::font(type));
  label->setForegroundRole(role);
  label->setWordWrap(true);
  return label;
}

}  // namespace quorvane
