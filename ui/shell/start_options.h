#pragma once

#include <QStringList>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "protocol/product.h"

namespace quorvane {

// What the program was started with.
struct StartOptions {
  std::string device;  // the base to connect to: its id, its node or its serial number; empty: any
  std::vector<FanatecProduct> simulated;            // simulated bases in place of the machine's own
  std::optional<std::filesystem::path> state;       // where simulated bases keep their sets
  std::optional<std::filesystem::path> transcript;  // where to write what the simulated base saw
  std::vector<std::filesystem::path> files;         // settings to import, as given
};

// What there is to print in place of a start.
struct StartText {
  QString text;
  int exitStatus;  // 0 after help or version, 2 after wrong usage
};

// Reads a command line, the program's name first. Fills `instead` when there is nothing to start.
StartOptions parseStart(const QStringList& words, std::optional<StartText>& instead);

}  // namespace quorvane
