#pragma once

#include <filesystem>
#include <memory>
#include <vector>

#include "protocol/product.h"
#include "simulator/menu_storage.h"
#include "simulator/simulated_state.h"

namespace quorvane {

// A file of the user that stores the menus of simulated bases between runs, shared by several
// processes. The first change creates it. A file with any other content is never overwritten.
// Thread-safe; its storages share nothing but the file.
//
// Throws FileError and DecodingError; their messages begin with the path.
class SimulatedStateFile {
 public:
  // The file for bases of these products, in this order. A file of other products is a
  // DecodingError when it is read.
  SimulatedStateFile(std::filesystem::path path, std::vector<FanatecProduct> products);

  // The storage of the base of the product at this index.
  std::unique_ptr<MenuStorage> storage(std::size_t number) const;

 private:
  class Storage;

  std::filesystem::path path_;
  std::vector<FanatecProduct> products_;
};

}  // namespace quorvane
