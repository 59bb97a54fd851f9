#include "simulator/transcript.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/thread.h"

namespace quorvane {
namespace {

using Lines = std::vector<std::string>;

TEST(Transcript, KeepsItsLinesInOrder) {
  Transcript transcript;
  EXPECT_EQ(transcript.lines(), Lines{});
  transcript.add("open");
  transcript.add("");
  transcript.add("close");
  EXPECT_EQ(transcript.lines(), (Lines{"open", "", "close"}));
}

TEST(Transcript, StartsOverWhenCleared) {
  Transcript transcript;
  transcript.add("open");
  transcript.clear();
  EXPECT_EQ(transcript.lines(), Lines{});
  transcript.add("close");
  EXPECT_EQ(transcript.lines(), (Lines{"close"}));
}

TEST(Transcript, WaitsUntilThereAreEnoughLines) {
  Transcript transcript;
  transcript.waitForLines(0);
  transcript.add("one");
  transcript.waitForLines(1);
  const Thread writer("writer", [&] {
    transcript.add("two");
    transcript.add("three");
  });
  transcript.waitForLines(3);
  EXPECT_EQ(transcript.lines(), (Lines{"one", "two", "three"}));
}

TEST(Transcript, TakesLinesFromManyThreads) {
  constexpr std::size_t each = 500;
  Transcript transcript;
  {
    std::vector<Thread> writers;
    for (const char* line : {"a", "b", "c"}) {
      writers.emplace_back(line, [&transcript, line] {
        for (std::size_t i = 0; i < each; ++i) transcript.add(line);
      });
    }
    transcript.waitForLines(3 * each);
  }
  EXPECT_EQ(transcript.lines().size(), 3 * each);
}

TEST(PacketText, ShowsTheBytesUpToTheLastThatIsNotZero) {
  const std::vector<std::pair<Bytes, std::string>> cases{
      {{0xFF, 0x03, 0x02}, "ff 03 02"},
      {{0xFF, 0x03, 0x02, 0}, "ff 03 02 +1"},
      {{0xFF, 0, 0x02, 0, 0}, "ff 00 02 +2"},
      {{0x01}, "01"},
      {{0}, " +1"},
      {{0, 0, 0}, " +3"},
      {{}, ""},
  };
  for (const auto& [packet, text] : cases) EXPECT_EQ(packetText(packet), text);
  Bytes request(64);
  request[0] = 0xFF;
  request[1] = 0x03;
  request[2] = 0x02;
  EXPECT_EQ(packetText(request), "ff 03 02 +61");
}

}  // namespace
}  // namespace quorvane
