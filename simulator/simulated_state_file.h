#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "protocol/product.h"
#include "simulator/menu_storage.h"
#include "simulator/simulated_state.h"

namespace quorvane {

// A file of the user's that keeps what simulated bases are set to, between runs and for several
// processes at once. It is made by the first change. A file that holds anything else is never
// written to. Any thread may call; its storages share nothing but the file.
//
// Failures are FileError and DecodingError; their texts begin with the path.
class SimulatedStateFile {
 public:
  // The file for bases of these products, in this order. A file of other products is an error.
  SimulatedStateFile(std::filesystem::path path, std::vector<FanatecProduct> products);

  // The storage of the base with this place among the products.
  std::unique_ptr<MenuStorage> storage(std::size_t number) const;

 private:
  class Storage;

  std::filesystem::path path_;
  std::vector<FanatecProduct> products_;
};

}  // namespace quorvane
