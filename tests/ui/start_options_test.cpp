#include "ui/shell/start_options.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/version.h"

namespace quorvane {
namespace {

struct Parsed {
  StartOptions options;
  std::optional<StartText> instead;

  std::string text() const { return instead ? instead->text.toStdString() : ""; }
};

Parsed parse(const QStringList& words) {
  Parsed parsed;
  parsed.options = parseStart(QStringList{QStringLiteral("quorvane")} + words, parsed.instead);
  return parsed;
}

TEST(StartOptions, AreNoneWithoutWords) {
  const Parsed parsed = parse({});
  EXPECT_FALSE(parsed.instead);
  EXPECT_TRUE(parsed.options.simulated.empty());
  EXPECT_EQ(parsed.options.device, "");
  EXPECT_TRUE(parsed.options.files.empty());
  EXPECT_FALSE(parsed.options.transcript);
}

using Files = std::vector<std::filesystem::path>;

TEST(StartOptions, TakeFilesInTheirOrder) {
  const QStringList words{QStringLiteral("wet.json"), QStringLiteral("a b\u00e9.json")};
  const Files files{"wet.json", "a b\u00e9.json"};
  EXPECT_EQ(parse(words).options.files, files);
  EXPECT_EQ(parse(QStringList{QStringLiteral("--")} + words).options.files, files);
  EXPECT_EQ(parse({QStringLiteral("--"), QStringLiteral("--simulate")}).options.files,
            Files{"--simulate"});
}

TEST(StartOptions, LeaveThoseOfTheToolkitToIt) {
  const QStringList words{QStringLiteral("-reverse"),   QStringLiteral("-platform"),
                          QStringLiteral("offscreen"),  QStringLiteral("--style"),
                          QStringLiteral("windows"),    QStringLiteral("-stylesheet=a.css"),
                          QStringLiteral("--simulate"), QStringLiteral("wet.json"),
                          QStringLiteral("-session"),   QStringLiteral("1_2")};
  const Parsed parsed = parse(words);
  EXPECT_FALSE(parsed.instead) << parsed.text();
  EXPECT_EQ(parsed.options.simulated.size(), 1U);
  EXPECT_EQ(parsed.options.files, Files{"wet.json"});
  EXPECT_EQ(parse({QStringLiteral("--"), QStringLiteral("-reverse")}).options.files,
            Files{"-reverse"});
  EXPECT_TRUE(parse({QStringLiteral("-backwards")}).instead);
}

TEST(StartOptions, NameTheTranscript) {
  const Parsed parsed = parse({QStringLiteral("--simulate"), QStringLiteral("--transcript=t.txt")});
  EXPECT_EQ(parsed.options.simulated.size(), 1U);
  EXPECT_EQ(parsed.options.transcript, std::filesystem::path("t.txt"));
}

TEST(StartOptions, NameTheStateOfSimulatedBases) {
  const Parsed parsed = parse({QStringLiteral("--simulate-state"), QStringLiteral("my.state"),
                               QStringLiteral("--simulate"), QStringLiteral("wet.json")});
  EXPECT_FALSE(parsed.instead) << parsed.text();
  EXPECT_EQ(parsed.options.state, std::filesystem::path("my.state"));
  EXPECT_EQ(parsed.options.files, Files{"wet.json"});
  EXPECT_FALSE(parse({QStringLiteral("--simulate")}).options.state);
}

TEST(StartOptions, SimulateAProduct) {
  struct Case {
    QStringList words;
    std::vector<std::int64_t> products;
    Files files;
  };
  const QString wet = QStringLiteral("wet.json");
  const std::vector<Case> cases{{{QStringLiteral("--simulate")}, {0x0020}, {}},
                                {{QStringLiteral("--simulate"), wet}, {0x0020}, {"wet.json"}},
                                {{wet, QStringLiteral("--simulate=0e03")}, {0x0E03}, {"wet.json"}},
                                {{QStringLiteral("--simulate=DD1")}, {0x0006}, {}},
                                {{QStringLiteral("--simulate=DD1,DD2")}, {0x0006, 0x0007}, {}}};
  for (const Case& c : cases) {
    const Parsed parsed = parse(c.words);
    EXPECT_FALSE(parsed.instead) << parsed.text();
    std::vector<std::int64_t> products;
    for (const auto& product : parsed.options.simulated) products.push_back(product.productID);
    EXPECT_EQ(products, c.products);
    EXPECT_EQ(parsed.options.files, c.files);
  }
}

TEST(StartOptions, NameTheDevice) {
  const QString node = QStringLiteral("/dev/hidraw3");
  for (const QStringList& words : std::vector<QStringList>{
           {QStringLiteral("--device"), node},
           {QStringLiteral("--device=") + node},
           {QStringLiteral("--device"), QStringLiteral("QV-A"), QStringLiteral("--device"), node},
           {QStringLiteral("--simulate"), QStringLiteral("--device"), node}}) {
    const Parsed parsed = parse(words);
    EXPECT_FALSE(parsed.instead) << parsed.text();
    EXPECT_EQ(parsed.options.device, "/dev/hidraw3");
    EXPECT_TRUE(parsed.options.files.empty());
  }
}

TEST(StartOptions, WrongUsageIsAnError) {
  for (const char* const word : {"--simulate=pedals", "--simulate=", "--simulate=DD1,", "--device",
                                 "--fast", "-x", "--simulate-state", "--simulate-state=my.state"}) {
    const Parsed parsed = parse({QString::fromLatin1(word)});
    ASSERT_TRUE(parsed.instead) << word;
    EXPECT_EQ(parsed.instead->exitStatus, 2) << word;
    EXPECT_TRUE(parsed.text().ends_with("\n")) << parsed.text();
  }
  EXPECT_TRUE(parse({QStringLiteral("--fast")}).text().find("--help") != std::string::npos);
}

TEST(StartOptions, TellTheVersion) {
  const Parsed parsed = parse({QStringLiteral("--version")});
  ASSERT_TRUE(parsed.instead);
  EXPECT_EQ(parsed.instead->exitStatus, 0);
  EXPECT_TRUE(parsed.text().starts_with("quorvane " + std::string(version()) + " ("))
      << parsed.text();
}

TEST(StartOptions, Help) {
  for (const char* const word : {"-h", "--help"}) {
    const Parsed parsed = parse({QString::fromLatin1(word), QStringLiteral("wet.json")});
    ASSERT_TRUE(parsed.instead);
    EXPECT_EQ(parsed.instead->exitStatus, 0);
    for (const char* const part :
         {"--device", "--simulate", "--simulate-state", "--version", "--help", "FILE"}) {
      EXPECT_NE(parsed.text().find(part), std::string::npos) << part;
    }
  }
}

}  // namespace
}  // namespace quorvane
