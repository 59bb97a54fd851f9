#pragma once

#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <vector>

#include "tests/support/child_process.h"

namespace quorvane {

// RAII: drops root's privileges while it lives. Does nothing if the process is not root. At most
// one instance at a time, and only while no other thread runs.
class AsOrdinaryUser {
 public:
  AsOrdinaryUser() : isRoot_(::geteuid() == 0) {
    if (!isRoot_) return;
    groups_.resize(static_cast<std::size_t>(::getgroups(0, nullptr)));
    groups_.resize(
        static_cast<std::size_t>(::getgroups(static_cast<int>(groups_.size()), groups_.data())));
    EXPECT_EQ(::setgroups(0, nullptr), 0);
    EXPECT_EQ(::setresgid(ordinaryUser, ordinaryUser, 0), 0);
    EXPECT_EQ(::setresuid(ordinaryUser, ordinaryUser, 0), 0);
  }
  ~AsOrdinaryUser() {
    if (!isRoot_) return;
    EXPECT_EQ(::setresuid(0, 0, 0), 0);
    EXPECT_EQ(::setresgid(0, 0, 0), 0);
    EXPECT_EQ(::setgroups(groups_.size(), groups_.data()), 0);
  }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;

 private:
  const bool isRoot_;
  std::vector<gid_t> groups_;
};

}  // namespace quorvane
