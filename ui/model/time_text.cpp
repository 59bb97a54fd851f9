#include "ui/model/time_text.h"

#include <QDateTime>
#include <QLocale>

namespace quorvane {
namespace {

// The locale's long time format, which has seconds, with its time zone removed.
QString timeOfDayFormat(const QLocale& locale) {
  QString format;
  bool isQuoted = false;
  for (const QChar c : locale.timeFormat(QLocale::LongFormat)) {
    if (c == u'\'') isQuoted = !isQuoted;
    if (c != u't' || isQuoted) format += c;
  }
  return format.remove(QStringLiteral("()")).trimmed();
}

}  // namespace

QString timeText(WallClock::time_point time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time.time_since_epoch());
  const QLocale locale;
  return locale.toString(QDateTime::fromSecsSinceEpoch(seconds.count()).time(),
                         timeOfDayFormat(locale));
}

}  // namespace quorvane
