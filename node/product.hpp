// Products: shared objects with a table of hooks.
#ifndef NODE_PRODUCT_HPP
#define NODE_PRODUCT_HPP

#include <string>
#include <vector>

#include "pm.h"

namespace node {

struct Product {
  std::string file;
  const PmProductMngt *hooks = nullptr;
};

// Loads a product for the life of the process. An InputError names the file and what is wrong.
Product load_product(const std::string &file);

// One table for all: each hook is that of every product in turn, the first failure is the answer;
// a slot that no product fills stays empty. The products are kept for the process; a later call
// replaces them.
PmProductMngt combined_hooks(const std::vector<Product> &products);

}  // namespace node

#endif
