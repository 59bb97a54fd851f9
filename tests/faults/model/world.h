#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "tests/app/model_fixture.h"
#include "tests/faults/dialogue.h"
#include "tests/faults/fault.h"

namespace quorvane {

// The names of the user's preset, of the preset in the file to import, of that file, and of the
// file that exports write.
inline constexpr const char* ownPreset = "Own";
inline constexpr const char* sharedPreset = "Shared";
inline constexpr const char* sharedFile = "shared.quorvane";
inline constexpr const char* writtenFile = "written";

// The model's fixture, made anew for each cell of the table. It has one user preset and one share
// file to import.
class World : public ModelTest {
 public:
  World();
  ~World() override;

  using ModelTest::attach;
  using ModelTest::backend_;
  using ModelTest::base;
  using ModelTest::behave;
  using ModelTest::clock_;
  using ModelTest::create;
  using ModelTest::directory_;
  using ModelTest::end;
  using ModelTest::history_;
  using ModelTest::info;
  using ModelTest::model;
  using ModelTest::panels_;
  using ModelTest::settle;
  using ModelTest::simulate;
  using ModelTest::staged;
  using ModelTest::start;
  using ModelTest::state_;
  using ModelTest::store_;
  using ModelTest::takeTranscript;
  using ModelTest::usb_;
  using ModelTest::waitUntil;

  // What the user sees that is new: the new lines of the log, or else the failed checks, or else
  // the status line. Paths are without the directory.
  Lines takeSeen();

  // Resets the base's USB device. Waits until it is connected again or the reset has failed.
  void resetUSB();
  void refuseUSBWith(int error);

  // The names of the user's presets, in the model and in the file.
  std::string presets();
  std::string presetsInFile() const;

  // The names of all files in the directory.
  std::string files() const;

 private:
  void TestBody() override {}
  std::string withoutDirectory(std::string text) const;

  bool usbRefuses_ = false;
};

}  // namespace quorvane
