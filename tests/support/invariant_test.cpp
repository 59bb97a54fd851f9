#include "support/invariant.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <limits>

namespace quorvane {
namespace {

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

// Standard error has this one line and nothing else.
constexpr const char* onlyLine = "^quorvane: internal fault: the sky fell\n$";

TEST(InvariantDeathTest, AFailureEndsTheProgramWithOneLine) {
  EXPECT_EXIT(invariantFailed("the sky fell"), testing::KilledBySignal(SIGABRT), onlyLine);
  EXPECT_EXIT(invariant(false, "the sky fell"), testing::KilledBySignal(SIGABRT), onlyLine);
}

TEST(InvariantDeathTest, TheLineMayBeEmptyOrAPartOfAText) {
  constexpr std::string_view text = "the sky fell";
  EXPECT_EXIT(invariantFailed(""), testing::KilledBySignal(SIGABRT),
              "^quorvane: internal fault: \n$");
  EXPECT_EXIT(invariantFailed(text.substr(4, 3)), testing::KilledBySignal(SIGABRT),
              "^quorvane: internal fault: sky\n$");
}

TEST(InvariantDeathTest, OverflowingArithmeticEndsTheProgram) {
  EXPECT_DEATH(checkedAdd(largest, 1, "the sky fell"), onlyLine);
  EXPECT_DEATH(checkedAdd(smallest, -1, "the sky fell"), onlyLine);
  EXPECT_DEATH(checkedMultiply(largest, 2, "the sky fell"), onlyLine);
  EXPECT_DEATH(checkedMultiply(smallest, -1, "the sky fell"), onlyLine);
  EXPECT_DEATH(checkedMultiply(0xFFFFFFFF, 0xFFFFFFFF, "the sky fell"), onlyLine);
}

TEST(InvariantDeathTest, AValueThatIsNoByteEndsTheProgram) {
  for (const std::int64_t value : {std::int64_t{-1}, std::int64_t{256}, largest, smallest}) {
    EXPECT_DEATH(checkedByte(value, "the sky fell"), onlyLine) << value;
  }
}

TEST(Invariant, OneThatHoldsDoesNothing) { invariant(true, "the sky fell"); }

TEST(Invariant, ArithmeticWithinTheRangeIsExact) {
  EXPECT_EQ(checkedAdd(2, 3, ""), 5);
  EXPECT_EQ(checkedAdd(-2, -3, ""), -5);
  EXPECT_EQ(checkedAdd(largest, 0, ""), largest);
  EXPECT_EQ(checkedAdd(largest - 1, 1, ""), largest);
  EXPECT_EQ(checkedAdd(largest, smallest, ""), -1);
  EXPECT_EQ(checkedMultiply(8, 63, ""), 504);
  EXPECT_EQ(checkedMultiply(-4, 5, ""), -20);
  EXPECT_EQ(checkedMultiply(smallest, 1, ""), smallest);
  EXPECT_EQ(checkedMultiply(largest, 0, ""), 0);
  EXPECT_EQ(checkedMultiply(0x7FFFFFFF, 0xFFFFFFFF, ""), 9223372030412324865);
}

TEST(Invariant, EveryByteIsAByte) {
  for (std::int64_t value = 0; value <= 255; ++value) EXPECT_EQ(checkedByte(value, ""), value);
}

}  // namespace
}  // namespace quorvane
