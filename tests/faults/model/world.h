#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "tests/app/model_fixture.h"
#include "tests/faults/dialogue.h"
#include "tests/faults/fault.h"

namespace quorvane {

// What the files hold and the model knows of the user's presets at the beginning.
inline constexpr const char* ownPreset = "Own";
inline constexpr const char* sharedPreset = "Shared";
inline constexpr const char* sharedFile = "shared.quorvane";
inline constexpr const char* writtenFile = "written";

// The world of the model's tests, one for each cell of the table. Its user has one preset of their
// own and a settings file from somebody else.
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
  using ModelTest::info;
  using ModelTest::model;
  using ModelTest::panels_;
  using ModelTest::settle;
  using ModelTest::simulate;
  using ModelTest::staged;
  using ModelTest::start;
  using ModelTest::store_;
  using ModelTest::usb_;
  using ModelTest::waitUntil;

  // What a person sees that was not there before: the lines of the log, or the checks that failed,
  // or else the status line. Without the directory.
  Lines takeSeen();

  // Resets the base and waits until it is connected again, or until the reset has failed.
  void resetUSB();
  void refuseUSBWith(int error);

  // The names of the user's presets, as the model has them and as the file has them.
  std::string presets();
  std::string presetsInFile() const;

  // The names of all files.
  std::string files() const;

 private:
  void TestBody() override {}
  std::string withoutDirectory(std::string text) const;

  bool usbRefuses_ = false;
};

}  // namespace quorvane
