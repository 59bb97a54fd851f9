#include "presets/preset_store.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "presets/json_reader.h"
#include "presets/preset_coding.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using Names = std::set<std::string>;
using Presets = std::vector<TuningPreset>;

constexpr std::array faults{ENOSPC, EIO, EDQUOT, EROFS, EACCES};
constexpr std::size_t longest = std::size_t{8} * 1024 * 1024;

TuningPreset named(std::string name) {
  TuningPreset preset;
  preset.name = std::move(name);
  preset.values = {{"SEN", 900}, {"brF", 90}, {"XYZ", 1}};
  return preset;
}

Presets presetsNamed(const std::vector<std::string>& names) {
  Presets presets;
  for (const std::string& name : names) presets.push_back(named(name));
  return presets;
}

std::vector<std::string> namesOf(const Presets& presets) {
  std::vector<std::string> names;
  for (const TuningPreset& preset : presets) names.push_back(preset.name);
  return names;
}

// A store in a temporary directory.
class PresetStoreTest : public testing::Test {
 public:
  // Whether this is the name of a backup of a damaged store.
  static bool isKept(const std::string& name) {
    static const std::regex pattern("presets\\.json\\.corrupt-[0-9]{8}T[0-9]{6}Z(-[0-9]+)?");
    return std::regex_match(name, pattern);
  }

  void put(std::string_view content) const { putFile(file, content); }

  // The backups of damaged stores.
  std::vector<path> kept() const {
    std::vector<path> files;
    for (const std::string& name : directory.names()) {
      if (isKept(name)) files.push_back(directory / name);
    }
    return files;
  }

  std::string error(const std::string& reason) const { return file.string() + ": " + reason; }
  std::string error(int number) const { return errorOf(file, number); }
  static std::string errorOf(const path& culprit, int number) {
    return culprit.string() + ": " + std::generic_category().message(number);
  }

  const TemporaryDirectory directory;
  const path file = directory / "presets.json";
  const PresetStore store{file};
};

using ImportTest = PresetStoreTest;
using ExportTest = PresetStoreTest;

// Contents that are not a valid list of presets.
std::vector<std::string> damagedContents() {
  const std::string whole = encodePresets(presetsNamed({"one", "two"}));
  std::string one = encodePresets({named("one")});
  one = one.substr(1, one.size() - 2);
  return {"",
          " ",
          "null",
          "{}",
          one,
          "[null]",
          "[" + one + ",{}]",
          whole.substr(0, whole.size() / 2),
          whole.substr(0, whole.size() - 1),
          whole + "]",
          "\xFF\xFE",
          std::string(100000, '['),
          std::string(1000, '\0'),
          encodeShareFile({"quorvane-settings-1", {}, {}, named("one")})};
}

TEST_F(PresetStoreTest, LoadsNothingWhenThereIsNoFile) {
  EXPECT_EQ(store.load(), Presets{});
  EXPECT_EQ(store.read(), Presets{});
  EXPECT_EQ(PresetStore(directory / "no/folder/presets.json").load(), Presets{});
  EXPECT_EQ(directory.names(), Names{});
}

TEST_F(PresetStoreTest, TheFirstSaveCreatesTheFolderAndTheFile) {
  const PresetStore first(directory / "data/Quorvane/presets.json");
  EXPECT_EQ(first.load(), Presets{});
  first.save(presetsNamed({"one"}));
  EXPECT_EQ(namesOf(first.load()), std::vector<std::string>{"one"});
  EXPECT_TRUE(std::filesystem::is_regular_file(directory / "data/Quorvane/presets.json"));
}

TEST_F(PresetStoreTest, LoadsWhatWasSaved) {
  for (const std::size_t count : {0U, 1U, 2U, 7U, 300U}) {
    Presets presets;
    for (std::size_t i = 0; i < count; ++i) presets.push_back(named(std::to_string(count - i)));
    store.save(presets);
    EXPECT_EQ(store.load(), presets);
    EXPECT_EQ(store.read(), presets);
  }
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, SavesAnEmptyListAsAnEmptyArray) {
  store.save({});
  EXPECT_EQ(contentOf(file), "[]");
}

TEST_F(PresetStoreTest, SavesTheTextOfTheList) {
  const Presets presets = presetsNamed({"one", "a/b", "one"});
  store.save(presets);
  EXPECT_EQ(contentOf(file), encodePresets(presets));
}

TEST_F(PresetStoreTest, SavesTheUsersPresetsOnlyInTheirOrder) {
  Presets shown = TuningPreset::builtIn();
  const Presets own = presetsNamed({"z", "a"});
  shown.insert(shown.begin() + 1, own[0]);
  shown.insert(shown.begin() + 4, own[1]);
  ASSERT_EQ(shown.size(), 6U);
  store.save(shown);
  EXPECT_EQ(store.load(), own);
  EXPECT_EQ(contentOf(file), encodePresets(own));
  store.save(TuningPreset::builtIn());
  EXPECT_EQ(contentOf(file), "[]");
}

TEST_F(PresetStoreTest, LoadsBuiltInPresetsAsTheyAre) {
  put(encodePresets(TuningPreset::builtIn()));
  EXPECT_EQ(store.load(), TuningPreset::builtIn());
}

TEST_F(PresetStoreTest, LoadsAFileThatAnExportWrote) {
  const Presets presets = presetsNamed({"one", "two"});
  PresetStore::exportPresets(presets, file);
  EXPECT_EQ(store.load(), presets);
}

TEST_F(PresetStoreTest, ADamagedFileLoadsAsNothing) {
  for (const std::string& content : damagedContents()) {
    put(content);
    EXPECT_EQ(store.load(), Presets{}) << content.substr(0, 50);
    EXPECT_TRUE(errorText([&] { store.read(); }).starts_with(file.string() + ": "));
    EXPECT_EQ(contentOf(file), content);
  }
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, SaysWhatIsWrongWithAFile) {
  put("[1,]");
  EXPECT_EQ(errorText([&] { store.read(); }),
            error("Not valid JSON at line 1, column 4: unexpected ']'; expected '[', '{', or a "
                  "literal"));
  put("[{}]");
  EXPECT_EQ(errorText([&] { store.read(); }), error("Preset 1: \"id\" is missing"));
  put("{}");
  EXPECT_EQ(errorText([&] { store.read(); }),
            error("A list of presets is not an array but object"));
}

TEST_F(PresetStoreTest, WhatCannotBeReadLoadsAsNothing) {
  store.save(presetsNamed({"one"}));
  for (const char* const call : {"open", "fstat", "read"}) {
    for (const int number : faults) {
      const FileCalls calls(FileCalls::failEach(call, number));
      EXPECT_EQ(store.load(), Presets{});
      EXPECT_EQ(errorText([&] { store.read(); }), error(number));
    }
  }
}

TEST_F(PresetStoreTest, ADirectoryInItsPlaceIsRefusedAndUnharmed) {
  std::filesystem::create_directories(file / "below");
  EXPECT_EQ(store.load(), Presets{});
  EXPECT_EQ(errorText([&] { store.read(); }), error("Is a directory"));
  EXPECT_EQ(errorText([&] { store.save(presetsNamed({"one"})); }), error("Is a directory"));
  EXPECT_TRUE(std::filesystem::is_directory(file / "below"));
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, AFifoInItsPlaceIsRefusedAndUnharmed) {
  ASSERT_EQ(::mkfifo(file.c_str(), 0666), 0);
  EXPECT_EQ(store.load(), Presets{});
  EXPECT_EQ(errorText([&] { store.read(); }), error("Not a regular file"));
  EXPECT_EQ(errorText([&] { store.save(presetsNamed({"one"})); }), error("Not a regular file"));
  EXPECT_TRUE(std::filesystem::is_fifo(file));
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, AFileInThePlaceOfItsFolderIsRefusedAndUnharmed) {
  put("content");
  const PresetStore below(file / "presets.json");
  EXPECT_EQ(below.load(), Presets{});
  EXPECT_EQ(errorText([&] { below.save({}); }), error("Not a directory"));
  EXPECT_EQ(contentOf(file), "content");
}

TEST_F(PresetStoreTest, FollowsALink) {
  std::filesystem::create_directory(directory / "there");
  std::filesystem::create_symlink("there/mine.json", file);
  EXPECT_EQ(store.load(), Presets{});
  const Presets presets = presetsNamed({"one"});
  store.save(presets);
  EXPECT_EQ(store.load(), presets);
  EXPECT_TRUE(std::filesystem::is_symlink(file));
  EXPECT_EQ(contentOf(directory / "there/mine.json"), encodePresets(presets));
}

TEST_F(PresetStoreTest, KeepsWhatALinkToADamagedFileLeadsTo) {
  std::filesystem::create_directory(directory / "there");
  putFile(directory / "there/presets.json", "damaged");
  std::filesystem::create_symlink("there/presets.json", file);
  store.save(presetsNamed({"one"}));
  EXPECT_EQ(namesOf(store.load()), std::vector<std::string>{"one"});
  std::vector<std::string> contents;
  for (const auto& entry : std::filesystem::directory_iterator(directory / "there")) {
    if (isKept(entry.path().filename())) contents.push_back(contentOf(entry.path()));
  }
  EXPECT_EQ(contents, std::vector<std::string>{"damaged"});
  EXPECT_TRUE(std::filesystem::is_symlink(file));
}

TEST_F(PresetStoreTest, AValidFileIsNotKept) {
  for (const Presets& presets :
       {Presets{}, presetsNamed({"one"}), TuningPreset::builtIn(), presetsNamed({"one", "two"})}) {
    put(encodePresets(presets));
    store.save(presetsNamed({"new"}));
    EXPECT_EQ(directory.names(), Names{"presets.json"});
  }
}

TEST_F(PresetStoreTest, ADamagedFileIsKeptOnceAsItWas) {
  for (const std::string& content : damagedContents()) {
    put(content);
    const Presets presets = presetsNamed({"one"});
    store.save(presets);
    EXPECT_EQ(store.load(), presets);
    ASSERT_EQ(kept().size(), 1U) << content.substr(0, 50);
    EXPECT_EQ(contentOf(kept().front()), content);
    store.save({});
    store.save(presets);
    ASSERT_EQ(kept().size(), 1U);
    EXPECT_EQ(directory.names().size(), 2U);
    std::filesystem::remove(kept().front());
  }
}

TEST_F(PresetStoreTest, EachDamagedFileIsKept) {
  for (const char* const content : {"first", "second", "third"}) {
    put(content);
    store.save({});
  }
  Names contents;
  for (const path& each : kept()) contents.insert(contentOf(each));
  EXPECT_EQ(contents, (Names{"first", "second", "third"}));
  EXPECT_EQ(directory.names().size(), 4U);
}

TEST_F(PresetStoreTest, TheNameOfWhatIsKeptTellsTheTime) {
  put("damaged");
  const auto before = wholeSeconds(WallClock::now());
  store.save({});
  const auto after = wholeSeconds(WallClock::now());
  ASSERT_EQ(kept().size(), 1U);
  std::string time = kept().front().filename().string().substr(21, 16);
  for (const std::size_t place : {4U, 7U}) time.insert(place, "-");
  for (const std::size_t place : {13U, 16U}) time.insert(place, ":");
  const auto told = parseISO8601(time);
  ASSERT_TRUE(told) << time;
  EXPECT_LE(before, *told);
  EXPECT_LE(*told, after);
}

TEST_F(PresetStoreTest, AFileThatCannotBeReadIsNotReplaced) {
  const std::string content = encodePresets(presetsNamed({"one"}));
  put(content);
  for (const char* const call : {"open", "fstat", "read"}) {
    for (const int number : {EIO, EMFILE, EAGAIN, EACCES}) {
      bool failed = false;  // only the first such call fails
      const FileCalls calls([&](const FileCall& made, std::size_t) {
        if (failed || made.name != call || made.file != file) return 0;
        failed = true;
        return number;
      });
      EXPECT_EQ(errorText([&] { store.save(presetsNamed({"two"})); }), error(number));
      EXPECT_EQ(contentOf(file), content);
      EXPECT_EQ(directory.names(), Names{"presets.json"});
    }
  }
}

TEST_F(PresetStoreTest, AFileThatTheUserMayWriteToButNotReadIsNotReplaced) {
  const std::string content = encodePresets(presetsNamed({"one"}));
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              becomeOrdinaryUser();
              put(content);
              if (::chmod(file.c_str(), 0200) != 0 || !store.load().empty()) return "readable";
              return errorText([&] { store.save(presetsNamed({"two"})); });
            }),
            error("Permission denied"));
  ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
  EXPECT_EQ(contentOf(file), content);
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, WhereNoLinksCanBeMadeADamagedFileIsKeptAsWell) {
  put("damaged");
  {
    const FileCalls calls(FileCalls::failEach("link", EPERM));
    store.save(presetsNamed({"one"}));
  }
  EXPECT_EQ(namesOf(store.load()), std::vector<std::string>{"one"});
  ASSERT_EQ(kept().size(), 1U);
  EXPECT_EQ(contentOf(kept().front()), "damaged");
}

TEST_F(PresetStoreTest, SavesThatFailKeepADamagedFileInItsPlaceOnly) {
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              becomeOrdinaryUser();
              put("damaged");
              if (::chmod(file.c_str(), 0444) != 0) return "writable";
              std::string errors;
              for (int i = 0; i < 3; ++i) errors += errorText([&] { store.save({}); }) + "\n";
              return errors;
            }),
            error("Permission denied") + "\n" + error("Permission denied") + "\n" +
                error("Permission denied") + "\n");
  EXPECT_EQ(contentOf(file), "damaged");
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, ADamagedFileIsKeptOnceEvenAfterSavesThatFail) {
  for (const bool links : {true, false}) {
    put("damaged");
    for (int i = 0; i < 3; ++i) {
      const FileCalls calls([&](const FileCall& call, std::size_t) {
        if (call.name == "link" && !links) return EPERM;
        return call.name == "write" ? ENOSPC : 0;
      });
      EXPECT_EQ(errorText([&] { store.save({}); }), error("No space left on device"));
    }
    EXPECT_TRUE(kept().empty());
    EXPECT_EQ(directory.names(), Names{"presets.json"});
    store.save({});
    ASSERT_EQ(kept().size(), 1U);
    EXPECT_EQ(contentOf(kept().front()), "damaged");
    EXPECT_EQ(contentOf(file), "[]");
    std::filesystem::remove(kept().front());
  }
}

TEST_F(PresetStoreTest, OneSaveSyncsTheDataOnceRenamesOnceAndSyncsTheDirectoryOnce) {
  for (int i = 0; i < 3; ++i) {
    const FileCalls calls;
    store.save(presetsNamed({"one"}));
    std::vector<std::string> lines;
    for (const FileCall& call : calls.made()) {
      const std::string name = path(call.file).filename();
      if (call.name == "fsync") {
        lines.push_back(call.file == directory.path() ? "sync directory"
                                                      : "sync " + name.substr(0, 9));
      }
      if (call.name.starts_with("rename")) {
        lines.push_back("rename " + name.substr(0, 9) + " " +
                        path(call.newName).filename().string());
      }
    }
    EXPECT_EQ(lines, (std::vector<std::string>{"sync .quorvane", "rename .quorvane presets.json",
                                               "sync directory"}));
    EXPECT_EQ(calls.count("mkdir") + calls.count("link") + calls.count("unlink"), 0U);
  }
}

TEST_F(PresetStoreTest, OfTwoProgramsTheLastToSaveWinsWhole) {
  const PresetStore other(file);
  store.save(presetsNamed({"ours"}));
  const Presets loaded = store.load();
  other.save(presetsNamed({"theirs", "and more"}));
  Presets changed = loaded;
  changed.push_back(named("new"));
  store.save(changed);
  EXPECT_EQ(other.load(), changed);
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, ReadersSeeOneOfTheListsThatThreadsSave) {
  const Presets few = presetsNamed({"one"});
  const Presets many = presetsNamed(std::vector<std::string>(200, "many"));
  store.save(few);
  bool whole = true;
  {
    std::vector<Thread> threads;
    threads.reserve(2);
    for (const Presets* presets : {&few, &many}) {
      threads.emplace_back("saves", [this, presets] {
        for (int i = 0; i < 50; ++i) store.save(*presets);
      });
    }
    for (int i = 0; i < 50; ++i) {
      const Presets seen = store.load();
      whole = whole && (seen == few || seen == many);
    }
  }
  EXPECT_TRUE(whole);
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(PresetStoreTest, AnyFailureOfASaveLeavesTheOldListOrTheNew) {
  const Presets before = presetsNamed({"old"});
  const Presets after = presetsNamed({"new"});
  for (const int number : faults) {
    std::size_t failed = 0;
    for (bool failing = true; failing; ++failed) {
      store.save(before);
      std::string failure;
      path culprit;
      {
        const FileCalls calls(FileCalls::failAt(failed, number));
        failure = errorText([&] { store.save(after); });
        failing = failed < calls.made().size();
        if (failing) culprit = calls.made()[failed].file;
      }
      SCOPED_TRACE(failed);
      const Presets seen = store.read();
      EXPECT_TRUE(seen == before || seen == after);
      if (seen == before) {
        // The error names the lock file only if that cannot be accessed.
        const path lock = directory / ".lock";
        const bool isLock = number == EACCES && culprit == lock;
        EXPECT_EQ(failure, errorOf(isLock ? lock : file, number));
      }
      if (!failing) {
        EXPECT_EQ(failure, "no error");
      }
      // A file that could not be read for a moment is backed up.
      for (const path& each : kept()) {
        EXPECT_EQ(contentOf(each), encodePresets(before));
        std::filesystem::remove(each);
      }
      EXPECT_EQ(directory.names(), Names{"presets.json"});
    }
    EXPECT_GT(failed, 10U);
  }
}

TEST_F(PresetStoreTest, AKillAtAnyCallOfASaveLeavesTheOldListOrTheNew) {
  const Presets before = presetsNamed({"old"});
  const Presets after = presetsNamed({"new"});
  std::vector<bool> replaced;
  for (bool killed = true; killed;) {
    store.save(before);
    const std::size_t number = replaced.size();
    const std::string end = inChildProcess([&]() -> std::string {
      FileCalls calls(FileCalls::dieAt(number));
      calls.shortenWrites(100);
      store.save(after);
      return "saved";
    });
    killed = end == "signal 9";
    EXPECT_TRUE(killed || end == "saved") << end;
    const Presets seen = store.read();
    EXPECT_TRUE(seen == before || seen == after);
    replaced.push_back(seen == after);
  }
  EXPECT_TRUE(std::is_sorted(replaced.begin(), replaced.end()));
  EXPECT_EQ(std::count(replaced.begin(), replaced.end(), true), 3);
  EXPECT_TRUE(kept().empty());
}

TEST_F(PresetStoreTest, AKillAtAnyCallOfASaveLosesNoDamagedFile) {
  for (std::size_t number = 0;; ++number) {
    put("damaged");
    const std::string end = inChildProcess([&]() -> std::string {
      const FileCalls calls(FileCalls::dieAt(number));
      store.save(presetsNamed({"new"}));
      return "saved";
    });
    const bool isInPlace = contentOf(file) == "damaged";
    const auto files = kept();
    EXPECT_TRUE(isInPlace || namesOf(store.read()) == std::vector<std::string>{"new"});
    EXPECT_TRUE(isInPlace || files.size() == 1);
    for (const path& each : files) {
      EXPECT_EQ(contentOf(each), "damaged");
      std::filesystem::remove(each);
    }
    if (end == "saved") break;
    ASSERT_EQ(end, "signal 9");
  }
}

TEST_F(PresetStoreTest, AKillAtAnyMomentLeavesOneOfTheListsThatWereSaved) {
  constexpr int rounds = 100;
  const Presets few = presetsNamed({"one"});
  const Presets many = presetsNamed(std::vector<std::string>(100, "many"));
  store.save(few);
  for (int round = 0; round < rounds; ++round) {
    Pipe progress;
    ChildProcess child([&]() -> std::string {
      const FileCalls calls([&](const FileCall&, std::size_t) {
        return ::write(progress.writing.get(), ".", 1) == 1 ? 0 : EIO;
      });
      for (;;) {
        store.save(many);
        store.save(few);
      }
    });
    for (int i = 0; i < round % 41; ++i) {
      char byte = 0;
      ASSERT_EQ(::read(progress.reading.get(), &byte, 1), 1);
    }
    child.kill();
    ASSERT_EQ(child.end(), "signal 9");
    const Presets seen = store.read();
    ASSERT_TRUE(seen == few || seen == many);
  }
  EXPECT_TRUE(kept().empty());
}

class PresetVersions : public PresetStoreTest {
 protected:
  // "1: one two, 2: unreadable": the numbers and names of the former versions.
  std::string versions() const {
    std::string text;
    for (const PresetStore::FormerVersion& version : kept_.formerVersions()) {
      if (!text.empty()) text += ", ";
      text += std::to_string(version.number) + ":";
      if (!version.presets) text += " unreadable";
      for (const auto& preset : version.presets.value_or(Presets())) text += " " + preset.name;
    }
    return text;
  }

  const std::filesystem::path folder_ = directory / "state/versions";
  const PresetStore kept_{file, Clock::system(), VersionFolder(folder_)};
};

TEST_F(PresetVersions, AreWhatEachChangeReplaced) {
  EXPECT_EQ(versions(), "");
  kept_.save(presetsNamed({"one"}));
  EXPECT_EQ(versions(), "");
  kept_.save(presetsNamed({"one", "two"}));
  const auto add = [](Presets& presets) { presets.push_back(named("three")); };
  EXPECT_EQ(kept_.change(add).versionFailure, "");
  SharedFile::Place place;
  EXPECT_TRUE(kept_.tryChange(add, place));
  EXPECT_EQ(versions(), "1: one, 2: one two, 3: one two three");
  kept_.change([](Presets& /*unchanged*/) {});
  EXPECT_EQ(versions(), "1: one, 2: one two, 3: one two three");
}

TEST_F(PresetVersions, AreNotKeptOfADamagedFileWhichHasAnotherName) {
  putFile(file, "[{]");
  kept_.save(presetsNamed({"one"}));
  EXPECT_EQ(versions(), "");
  kept_.save(presetsNamed({"two"}));
  EXPECT_EQ(versions(), "1: one");
}

TEST_F(PresetVersions, AFailureToKeepOneIsToldAndFailsNoChange) {
  kept_.save(presetsNamed({"one"}));
  putFile(directory / "state", "in the way");
  const auto add = [](Presets& presets) { presets.push_back(named("two")); };
  EXPECT_EQ(kept_.change(add).versionFailure, (directory / "state").string() + ": Not a directory");
  EXPECT_EQ(namesOf(kept_.read()), (std::vector<std::string>{"one", "two"}));
  kept_.save(presetsNamed({"three"}));
  EXPECT_EQ(namesOf(kept_.read()), std::vector<std::string>{"three"});
}

TEST_F(PresetVersions, OneThatCannotBeReadIsListedAsSuch) {
  kept_.save(presetsNamed({"one"}));
  kept_.save(presetsNamed({"two"}));
  putFile(folder_ / "000002-20260301T093000Z.json", "[{]");
  putFile(folder_ / "000003-20260301T093000Z.json", std::string(100000, '['));
  putFile(folder_ / "000004-20260301T093000Z.json", "");
  kept_.save(presetsNamed({"three"}));
  EXPECT_EQ(versions(), "1: one, 2: unreadable, 3: unreadable, 4: unreadable, 5: two");
}

TEST_F(PresetStoreTest, ItsDefaultPlaceIsInTheUsersDataDirectory) {
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              ::setenv("XDG_DATA_HOME", directory.path().c_str(), 1);
              ::setenv("XDG_STATE_HOME", (directory / "state").c_str(), 1);
              if (PresetStore().fileURL() != PresetStore::shared().fileURL()) return "differ";
              PresetStore::shared().save(presetsNamed({"two"}));
              PresetStore::shared().save(presetsNamed({"one"}));
              return PresetStore::shared().fileURL();
            }),
            directory / "Quorvane/presets.json");
  EXPECT_EQ(VersionFolder(directory / "state/Quorvane/preset-versions").versions().size(), 1U);
  EXPECT_EQ(namesOf(PresetStore(directory / "Quorvane/presets.json").load()),
            std::vector<std::string>{"one"});
}

TEST_F(PresetStoreTest, SharedIsTheSameStoreForTheRun) {
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              ::setenv("XDG_DATA_HOME", "/first", 1);
              const PresetStore& first = PresetStore::shared();
              ::setenv("XDG_DATA_HOME", "/second", 1);
              return &PresetStore::shared() == &first ? first.fileURL().string() : "another";
            }),
            "/first/Quorvane/presets.json");
}

TEST_F(PresetStoreTest, WithoutAHomeThereIsNoDefaultPlace) {
  // Only root can become a user who is not in the user database.
  if (::geteuid() != 0) return;
  uid_t stranger = 54321;
  while (::getpwuid(stranger) != nullptr) ++stranger;
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              ::unsetenv("XDG_DATA_HOME");
              ::unsetenv("HOME");
              becomeOrdinaryUser(stranger);
              return PresetStore().fileURL();
            }),
            "signal " + std::to_string(SIGABRT));
}

TEST_F(PresetStoreTest, TakesARelativePlace) {
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              std::filesystem::current_path(directory.path());
              PresetStore("presets.json").save(presetsNamed({"one"}));
              PresetStore("a/b.json").save(presetsNamed({"two"}));
              return "saved";
            }),
            "saved");
  EXPECT_EQ(namesOf(store.load()), std::vector<std::string>{"one"});
  EXPECT_EQ(namesOf(PresetStore(directory / "a/b.json").load()), std::vector<std::string>{"two"});
}

TEST_F(ExportTest, WritesEveryPresetInTheLayoutOfTheStore) {
  Presets presets = TuningPreset::builtIn();
  presets.push_back(named("own"));
  PresetStore::exportPresets(presets, file);
  EXPECT_EQ(contentOf(file), encodePresets(presets));
  PresetStore::exportPresets({}, file);
  EXPECT_EQ(contentOf(file), "[]");
}

TEST_F(ExportTest, WritesAShareFileWithTheMomentOfTheExport) {
  const WallClock::time_point now(std::chrono::milliseconds(1741977005999));
  const TuningPreset preset = TuningPreset::builtIn().at(1);
  for (const std::optional<std::string>& base :
       {std::optional<std::string>(), std::optional<std::string>("ClubSport DD+")}) {
    PresetStore::exportShare(preset, base, file, now);
    const SettingsShareFile written = decodeShareFile(parseJSON(contentOf(file)));
    EXPECT_EQ(written.format, "quorvane-settings-1");
    EXPECT_EQ(iso8601(written.exportedAt), "2025-03-14T18:30:05Z");
    EXPECT_EQ(written.base, base);
    EXPECT_EQ(written.preset, preset);
    EXPECT_EQ(contentOf(file), encodeShareFile(written));
  }
}

TEST_F(ExportTest, AFailureLeavesTheOldFileAndNoOther) {
  put("old");
  for (const int number : faults) {
    for (const char* const call : {"open", "write", "rename"}) {
      const FileCalls calls(FileCalls::failEach(call, number));
      EXPECT_EQ(errorText([&] { PresetStore::exportPresets({}, file); }), error(number));
      EXPECT_EQ(errorText([&] { PresetStore::exportShare(named("one"), "base", file); }),
                error(number));
    }
  }
  EXPECT_EQ(contentOf(file), "old");
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

TEST_F(ExportTest, RefusesAFolderThatIsMissing) {
  const path missing = directory / "no/file";
  const std::string expected = missing.string() + ": No such file or directory";
  EXPECT_EQ(errorText([&] { PresetStore::exportPresets({}, missing); }), expected);
  EXPECT_EQ(errorText([&] { PresetStore::exportShare(named("one"), {}, missing); }), expected);
  EXPECT_EQ(directory.names(), Names{});
}

TEST_F(ImportTest, AShareFileGivesOnePresetOfTheUsers) {
  const TuningPreset preset = TuningPreset::builtIn().front();
  PresetStore::exportShare(preset, "base", file);
  const Presets imported = PresetStore::importPresets(file);
  ASSERT_EQ(imported.size(), 1U);
  TuningPreset expected = preset;
  expected.isBuiltIn = false;
  expected.id = imported[0].id;
  EXPECT_EQ(imported[0], expected);
  EXPECT_NE(imported[0].id, preset.id);
}

TEST_F(ImportTest, AnUnknownFormatIsNoObstacle) {
  put(encodeShareFile({"quorvane-settings-2", {}, {}, named("one")}));
  EXPECT_EQ(namesOf(PresetStore::importPresets(file)), std::vector<std::string>{"one"});
}

TEST_F(ImportTest, AnExportedListGivesPresetsOfTheUsersInItsOrder) {
  Presets presets = TuningPreset::builtIn();
  presets.push_back(named("own"));
  PresetStore::exportPresets(presets, file);
  const Presets imported = PresetStore::importPresets(file);
  ASSERT_EQ(imported.size(), presets.size());
  Names ids;
  for (std::size_t i = 0; i < presets.size(); ++i) {
    TuningPreset expected = presets[i];
    expected.isBuiltIn = false;
    expected.id = imported[i].id;
    EXPECT_EQ(imported[i], expected);
    ids.insert(presets[i].id.text());
    ids.insert(imported[i].id.text());
  }
  EXPECT_EQ(ids.size(), 2 * presets.size());
}

TEST_F(ImportTest, AnEmptyListGivesNothing) {
  put("[]");
  EXPECT_EQ(PresetStore::importPresets(file), Presets{});
}

TEST_F(ImportTest, ASinglePresetGivesThatOne) {
  const TuningPreset preset = named("one");
  const std::string list = encodePresets({preset});
  put(list.substr(1, list.size() - 2));
  const Presets imported = PresetStore::importPresets(file);
  ASSERT_EQ(imported.size(), 1U);
  EXPECT_EQ(imported[0].name, "one");
  EXPECT_EQ(imported[0].values, preset.values);
  EXPECT_NE(imported[0].id, preset.id);
}

TEST_F(ImportTest, AShareFileThatIsAPresetAsWellCountsAsAShareFile) {
  const std::string list = encodePresets({named("outer")});
  JSONValue both = parseJSON(list).at(0);
  both["format"] = "any";
  both["exportedAt"] = "2025-03-14T18:30:05Z";
  both["preset"] = parseJSON(encodePresets({named("inner")})).at(0);
  put(both.dump());
  EXPECT_EQ(namesOf(PresetStore::importPresets(file)), std::vector<std::string>{"inner"});
  // Any invalid member of the share file makes it a plain preset.
  for (const std::pair<std::string, JSONValue>& member :
       std::vector<std::pair<std::string, JSONValue>>{{"format", 1},
                                                      {"exportedAt", "2025-03-14T18:30:05.123Z"},
                                                      {"base", 5},
                                                      {"preset", {}}}) {
    JSONValue other = both;
    other[member.first] = member.second;
    put(other.dump());
    EXPECT_EQ(namesOf(PresetStore::importPresets(file)), std::vector<std::string>{"outer"});
  }
}

TEST_F(ImportTest, TheSameFileTwiceGivesOtherIDs) {
  PresetStore::exportPresets(presetsNamed({"one", "one"}), file);
  Names ids;
  for (int i = 0; i < 2; ++i) {
    const Presets imported = PresetStore::importPresets(file);
    EXPECT_EQ(namesOf(imported), (std::vector<std::string>{"one", "one"}));
    for (const TuningPreset& preset : imported) ids.insert(preset.id.text());
  }
  EXPECT_EQ(ids.size(), 4U);
}

TEST_F(ImportTest, WhatIsNoneOfTheFormsFailsAsASinglePreset) {
  JSONValue undated = parseJSON(encodeShareFile({"any", {}, {}, named("one")}));
  undated.erase("exportedAt");
  JSONValue incomplete = parseJSON(encodePresets({named("one")})).at(0);
  incomplete.erase("isBuiltIn");
  const std::vector<std::pair<std::string, std::string>> cases{
      {"{}", "\"id\" is missing"},
      {"{\"a\":1}", "\"id\" is missing"},
      {undated.dump(), "\"id\" is missing"},
      {incomplete.dump(), "\"isBuiltIn\" is missing"},
      {"[{}]", "A preset is not an object but array"},
      {"[" + incomplete.dump() + "]", "A preset is not an object but array"},
      {"null", "A preset is not an object but null"},
      {"1", "A preset is not an object but number"},
      {"\"text\"", "A preset is not an object but string"},
  };
  for (const auto& [content, reason] : cases) {
    put(content);
    EXPECT_EQ(errorText([&] { PresetStore::importPresets(file); }), error(reason));
  }
}

TEST_F(ImportTest, WhatIsNotJSONIsRefused) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "Not valid JSON at line 1, column 1: unexpected end of input"},
      {"settings", "Not valid JSON at line 1, column 1: invalid literal"},
      {"[\n1,", "Not valid JSON at line 2, column 3: unexpected end of input"},
      {std::string(100000, '['), "Not a settings file: nested deeper than 64"},
  };
  for (const auto& [content, reason] : cases) {
    put(content);
    EXPECT_EQ(errorText([&] { PresetStore::importPresets(file); }).substr(0, error(reason).size()),
              error(reason));
  }
}

TEST_F(ImportTest, WhatCannotBeReadIsRefused) {
  EXPECT_EQ(errorText([&] { PresetStore::importPresets(file); }),
            error("No such file or directory"));
  EXPECT_EQ(errorText([&] { PresetStore::importPresets(directory.path()); }),
            directory.path().string() + ": Is a directory");
  ASSERT_EQ(::mkfifo(file.c_str(), 0666), 0);
  EXPECT_EQ(errorText([&] { PresetStore::importPresets(file); }), error("Not a regular file"));
}

TEST_F(ImportTest, TakesEightMebibytesAndNoMore) {
  std::string content = encodePresets({named("one")});
  content.append(longest - content.size(), ' ');
  put(content);
  EXPECT_EQ(namesOf(PresetStore::importPresets(file)), std::vector<std::string>{"one"});
  put(content + " ");
  const FileCalls calls;
  EXPECT_EQ(errorText([&] { PresetStore::importPresets(file); }), error("Longer than 8 MiB"));
  EXPECT_EQ(calls.count("read"), 0U);
}

TEST_F(ImportTest, LeavesTheFileAlone) {
  const std::string content = encodePresets(presetsNamed({"one"}));
  put(content);
  PresetStore::importPresets(file);
  EXPECT_EQ(contentOf(file), content);
  EXPECT_EQ(directory.names(), Names{"presets.json"});
}

}  // namespace
}  // namespace quorvane
