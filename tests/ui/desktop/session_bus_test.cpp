#include "ui/desktop/session_bus.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>

#include "support/unique_fd.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_directory.h"
#include "tests/ui/desktop/private_bus.h"

namespace quorvane {
namespace {

constexpr auto address = "DBUS_SESSION_BUS_ADDRESS";
constexpr auto runtime = "XDG_RUNTIME_DIR";

class SessionBus : public testing::Test {
 protected:
  static std::ptrdiff_t threads() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"), {});
  }

  // Binds a socket to this name; with a leading null byte it is an abstract one.
  static UniqueFd bound(const std::string& name) {
    UniqueFd socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un where{};
    where.sun_family = AF_UNIX;
    name.copy(where.sun_path, sizeof where.sun_path);
    EXPECT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&where),
                     static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size())),
              0);
    return socket;
  }
  static UniqueFd listening(const std::string& name) {
    UniqueFd socket = bound(name);
    EXPECT_EQ(::listen(socket.get(), 8), 0);
    return socket;
  }

  TemporaryDirectory directory_;
  const ScopedVariable noAddress_{address};
  const ScopedVariable noRuntime_{runtime};
};

TEST_F(SessionBus, NothingIsStartedWhereThereIsNone) {
  const UniqueFd dead = bound(directory_ / "dead");
  const std::ptrdiff_t before = threads();
  EXPECT_FALSE(sessionBus());
  for (const std::string& nowhere :
       {"unix:path=" + (directory_ / "missing").string(),
        "unix:path=" + (directory_ / "dead").string() + ",guid=00", std::string("autolaunch:"),
        std::string("disabled:"), std::string("unix:"), std::string("unix:path"),
        std::string("unix:abstract="), std::string("nonsense"), std::string(";;"),
        "unix:path=" + std::string(5000, 'x')}) {
    const ScopedVariable variable(address, nowhere);
    EXPECT_FALSE(sessionBus()) << nowhere;
  }
  EXPECT_EQ(threads(), before);
}

TEST_F(SessionBus, OneOfSeveralAddressesIsEnough) {
  const UniqueFd live = listening(directory_ / "live socket");
  const ScopedVariable variable(address, "unix:path=/nonexistent;unix:guid=00,path=" +
                                             (directory_ / "live%20socket").string());
  EXPECT_TRUE(hasSessionBus());
}

TEST_F(SessionBus, MayHaveAnAbstractAddress) {
  const std::string name = directory_.path().string();
  const UniqueFd live = listening('\0' + name);
  const ScopedVariable variable(address, "unix:abstract=" + name);
  EXPECT_TRUE(hasSessionBus());
}

TEST_F(SessionBus, IsTheUsersWithoutAnAddress) {
  const ScopedVariable variable(runtime, directory_.path().string());
  EXPECT_FALSE(hasSessionBus());
  const UniqueFd live = listening(directory_ / "bus");
  EXPECT_TRUE(hasSessionBus());
  const ScopedVariable empty(address, "");
  EXPECT_TRUE(hasSessionBus());
}

TEST_F(SessionBus, AnAddressComesBeforeTheUsers) {
  const ScopedVariable variable(runtime, directory_.path().string());
  const UniqueFd live = listening(directory_ / "bus");
  const ScopedVariable elsewhere(address, "unix:path=/nonexistent");
  EXPECT_FALSE(hasSessionBus());
}

TEST_F(SessionBus, IsConnectedTo) {
  // Static, because Qt keeps the connection until the process ends.
  static const PrivateBus bus;
  const ScopedVariable variable(address, bus.address().toStdString());
  const auto connection = sessionBus();
  ASSERT_TRUE(connection);
  EXPECT_FALSE(connection->baseService().isEmpty());
}

}  // namespace
}  // namespace quorvane
