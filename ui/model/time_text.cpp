#include "ui/model/time_text.h"

#include <QDateTime>
#include <QLocale>

namespace quorvane {
namespace {

constexpr qint64 daysWithoutYear = 300;

QDateTime localTime(WallClock::time_point time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time.time_since_epoch());
  return QDateTime::fromSecsSinceEpoch(seconds.count());
}

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

QTime timeOfDay(WallClock::time_point time) { return localTime(time).time(); }

QString textOf(QTime time) {
  const QLocale locale;
  return locale.toString(time, timeOfDayFormat(locale));
}

}  // namespace

QString timeText(WallClock::time_point time) { return textOf(timeOfDay(time)); }

QString shortTimeText(WallClock::time_point time) {
  const QLocale locale;
  // The short format of the locale "C" has seconds.
  const QString format = locale.timeFormat(QLocale::ShortFormat).remove(QStringLiteral(":ss"));
  return locale.toString(timeOfDay(time), format);
}

QString dayAndTimeText(WallClock::time_point time, WallClock::time_point now) {
  const QDate day = localTime(time).date();
  const qint64 ago = day.daysTo(localTime(now).date());
  QString date = QLocale().toString(day, QStringLiteral("d MMM yyyy"));
  if (ago >= 0 && ago < daysWithoutYear) date = QLocale().toString(day, QStringLiteral("d MMM"));
  if (ago == 0) date = QStringLiteral("today");
  if (ago == 1) date = QStringLiteral("yesterday");
  return QStringLiteral("%1 %2").arg(date, shortTimeText(time));
}

QString longestTimeText() {
  const QString morning = textOf(QTime(10, 58, 58));
  const QString evening = textOf(QTime(22, 58, 58));
  return morning.size() > evening.size() ? morning : evening;
}

}  // namespace quorvane
