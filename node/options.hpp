// The command line of pmnode.
#ifndef NODE_OPTIONS_HPP
#define NODE_OPTIONS_HPP

#include <optional>
#include <string>
#include <vector>

namespace node {

struct Options {
  std::string chassis;
  std::string feed;     // empty: none
  std::string script;   // empty: none
  std::string journal;  // empty: none
  std::string record;   // empty: none
  std::string panel;    // picture to draw instead of taking commands; empty: none
  bool json = false;
  std::vector<std::string> products;
};

// An InputError for a command line that cannot be carried out. Nothing is answered when help or the
// version was asked for and has been printed.
std::optional<Options> read_options(int count, char **arguments);

}  // namespace node

#endif
