#include "ui/model/time_text.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QLocale>
#include <string>
#include <vector>

namespace quorvane {
namespace {

// RAII: sets the default locale.
class ScopedLocale {
 public:
  explicit ScopedLocale(const QString& name) { QLocale::setDefault(QLocale(name)); }
  ~ScopedLocale() { QLocale::setDefault(before_); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;

 private:
  const QLocale before_;
};

// A moment of today, by the clock on the wall.
WallClock::time_point at(int hour, int minute, int second) {
  const QDateTime moment(QDate(2024, 3, 9), QTime(hour, minute, second));
  return WallClock::time_point(std::chrono::seconds(moment.toSecsSinceEpoch()));
}

// Newer locale data has a narrow no-break space before AM and PM, older data has a space.
std::string shown(const char* locale, WallClock::time_point time) {
  const ScopedLocale scoped(QString::fromLatin1(locale));
  return timeText(time).replace(QChar(0x202F), u' ').toStdString();
}

TEST(TimeText, NoneIsLongerThanTheLongest) {
  for (const char* const locale : {"C", "de_DE", "en_GB", "en_US", "ko_KR", "hu_HU"}) {
    const ScopedLocale scoped(QString::fromLatin1(locale));
    const auto longest = longestTimeText().size();
    for (int hour = 0; hour < 24; ++hour) {
      EXPECT_LE(timeText(at(hour, 58, 58)).size(), longest) << locale << hour;
    }
  }
}

TEST(TimeText, IsTheTimeOfDayWithItsSecondsAsTheLocaleWritesIt) {
  struct Case {
    const char* locale;
    std::string morning;
    std::string afternoon;
  };
  const std::vector<Case> cases{{"C", "04:05:06", "14:04:54"},
                                {"de_DE", "04:05:06", "14:04:54"},
                                {"en_GB", "04:05:06", "14:04:54"},
                                {"en_US", "4:05:06 AM", "2:04:54 PM"}};
  for (const auto& [locale, morning, afternoon] : cases) {
    EXPECT_EQ(shown(locale, at(4, 5, 6)), morning) << locale;
    EXPECT_EQ(shown(locale, at(14, 4, 54)), afternoon) << locale;
  }
}

TEST(TimeText, TheShortFormHasNoSeconds) {
  for (const char* const locale : {"C", "de_DE", "en_GB"}) {
    const ScopedLocale scoped(QString::fromLatin1(locale));
    EXPECT_EQ(shortTimeText(at(14, 2, 54)).toStdString(), "14:02") << locale;
  }
}

TEST(TimeText, LeavesTheZoneAndTheDateOut) {
  for (const char* const locale : {"fr_FR", "ja_JP", "fi_FI", "pt_BR", "bg_BG"}) {
    const std::string text = shown(locale, at(14, 4, 54));
    EXPECT_NE(text.find("54"), std::string::npos) << text;
    EXPECT_EQ(text.find("UTC"), std::string::npos) << text;
    EXPECT_EQ(text.find("2024"), std::string::npos) << text;
    EXPECT_EQ(text.find("()"), std::string::npos) << text;
  }
}

TEST(TimeText, PartsOfASecondAreDropped) {
  const auto time = at(14, 4, 54);
  EXPECT_EQ(shown("C", time + std::chrono::milliseconds(999)), "14:04:54");
  EXPECT_EQ(shown("C", WallClock::time_point(std::chrono::milliseconds(-1))),
            shown("C", WallClock::time_point(std::chrono::seconds(-1))));
}

TEST(TimeText, TheDayIsToldAsSeenFromNow) {
  const ScopedLocale scoped(QStringLiteral("en_GB"));
  const auto now = at(14, 2, 0);
  const auto told = [&](std::chrono::hours ago) {
    return dayAndTimeText(now - ago, now).toStdString();
  };
  EXPECT_EQ(told(std::chrono::hours(0)), "today 14:02");
  EXPECT_EQ(told(std::chrono::hours(14)), "today 00:02");
  EXPECT_EQ(told(std::chrono::hours(16)), "yesterday 22:02");
  EXPECT_EQ(told(std::chrono::hours(48)), "7 Mar 14:02");
  EXPECT_EQ(told(std::chrono::hours(24 * 400)), "3 Feb 2023 14:02");
  EXPECT_EQ(shortTimeText(now).toStdString(), "14:02");
}

}  // namespace
}  // namespace quorvane
