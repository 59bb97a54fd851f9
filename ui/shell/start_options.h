#pragma once

#include <QStringList>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "protocol/product.h"

namespace quorvane {

// The options of the command line.
struct StartOptions {
  std::string device;  // id, node or serial number of the base to connect to; empty: any
  std::vector<FanatecProduct> simulated;            // simulated bases in place of the machine's own
  std::optional<std::filesystem::path> state;       // the state file of simulated bases
  std::optional<std::filesystem::path> transcript;  // where to write the simulated base's log
  std::vector<std::filesystem::path> files;         // settings to import, as given
};

// A text to print instead of starting.
struct StartText {
  QString text;
  int exitStatus;  // 0 after help or version, 2 after wrong usage
};

// Parses a command line, the program's name first. Sets `instead` if the program should print that
// and exit.
StartOptions parseStart(const QStringList& words, std::optional<StartText>& instead);

}  // namespace quorvane
