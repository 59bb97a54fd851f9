#include "cli/base_access.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <system_error>
#include <vector>

#include "protocol/error.h"
#include "tests/cli/attached_nodes.h"
#include "tests/cli/command_line_fixture.h"

namespace quorvane {
namespace {

// Two bases of one product with the same id, and one of another product.
class BaseAccess : public testing::Test {
 protected:
  BaseAccess() {
    nodes_.add(0x0020, "A1", "/dev/hidraw4");
    nodes_.add(0x0020, "B2", "/dev/hidraw5");
    nodes_.add(0x0006, "", "/dev/hidraw9");
  }

  std::string chosenNode(const std::string& which) {
    options_.device = which;
    return chosenBase({world_, options_}).device->node();
  }

  CapturedStream out_;
  CapturedStream err_;
  AttachedNodes nodes_;
  FakeUSBBus usb_;
  const World world_{{nodes_, usb_}, out_.file(), err_.file(), {}};
  GlobalOptions options_;
};

TEST_F(BaseAccess, ListsTheBasesInTheOrderOfChoice) {
  std::vector<std::string> listed;
  for (const HIDDeviceInfo& base : namedBases({world_, options_})) {
    listed.push_back(base.device->node());
  }
  EXPECT_EQ(listed, (Lines{"/dev/hidraw9", "/dev/hidraw4", "/dev/hidraw5"}));
}

TEST_F(BaseAccess, ListsOnlyTheBasesThatAnswerToTheName) {
  for (const auto& [which, count] : std::vector<std::pair<std::string, std::size_t>>{
           {"B2", 1}, {"0eb7:0020@00000000/1:4", 2}, {"nobody", 0}}) {
    options_.device = which;
    EXPECT_EQ(namedBases({world_, options_}).size(), count) << which;
  }
}

TEST_F(BaseAccess, ChoosesTheBaseThatTheNameStandsFor) {
  const std::vector<std::pair<std::string, std::string>> cases{
      {"", "/dev/hidraw9"},
      {"/dev/hidraw4", "/dev/hidraw4"},
      {"/dev/hidraw5", "/dev/hidraw5"},
      {"A1", "/dev/hidraw4"},
      {"B2", "/dev/hidraw5"},
      {"0eb7:0006@00000000/1:4", "/dev/hidraw9"},
  };
  for (const auto& [which, node] : cases) EXPECT_EQ(chosenNode(which), node) << which;
}

TEST_F(BaseAccess, ANameMatchesAsAWholeAndInItsCase) {
  for (const char* const which : {"A", "a1", "hidraw4", "/dev/hidraw", "0eb7:0006", "0x0006"}) {
    EXPECT_THROW(chosenNode(which), FanatecError) << which;
  }
}

TEST_F(BaseAccess, ANameOfSeveralBasesIsWrongUsageAndListsThem) {
  try {
    chosenNode(simulatedID);
    ADD_FAILURE() << "chose one";
  } catch (const UsageError& error) {
    EXPECT_STREQ(error.what(),
                 "Several bases answer to 0eb7:0020@00000000/1:4. Name one by its node:\n"
                 "  /dev/hidraw4  0eb7:0020@00000000/1:4  CSL DD / GT DD Pro / ClubSport DD\n"
                 "  /dev/hidraw5  0eb7:0020@00000000/1:4  CSL DD / GT DD Pro / ClubSport DD");
  }
}

TEST_F(BaseAccess, NoBaseIsAFailureOfTheDevice) {
  try {
    chosenNode("/dev/hidraw0");
    ADD_FAILURE() << "chose one";
  } catch (const FanatecError& error) {
    EXPECT_EQ(error, FanatecError::ioFailed("device not found"));
    EXPECT_EQ(error.openCode(), HIDReturnCode::noDevice);
  }
}

TEST(PermissionFailure, IsToldFromOtherFailures) {
  const auto denied = describeHIDReturn(HIDReturnCode::notPermitted);
  const auto systemError = [](int error) {
    return std::system_error(error, std::generic_category());
  };
  EXPECT_TRUE(isPermissionFailure(FanatecError::ioFailed("", HIDReturnCode::notPermitted)));
  EXPECT_TRUE(isPermissionFailure(systemError(EACCES)));
  EXPECT_TRUE(isPermissionFailure(systemError(EPERM)));
  EXPECT_FALSE(isPermissionFailure(FanatecError::ioFailed(denied)));
  EXPECT_FALSE(isPermissionFailure(FanatecError::ioFailed(denied, HIDReturnCode::noDevice)));
  EXPECT_FALSE(isPermissionFailure(FanatecError::timeout(denied)));
  EXPECT_FALSE(isPermissionFailure(systemError(ENODEV)));
  EXPECT_FALSE(isPermissionFailure(UsageError(denied)));
}

TEST(PermissionHint, IsOneLineThatNamesTheRule) {
  const std::string hint = permissionHint;
  EXPECT_EQ(hint.find('\n'), std::string::npos);
  EXPECT_NE(hint.find("70-quorvane.rules"), std::string::npos);
  EXPECT_NE(hint.find("quorvanectl udev-rule"), std::string::npos);
}

}  // namespace
}  // namespace quorvane
