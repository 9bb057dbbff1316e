// docs/commands.md, which is printed from the commands themselves.
#ifndef NODE_COMMANDS_PAGE_HPP
#define NODE_COMMANDS_PAGE_HPP

#include <string>

namespace node {

std::string commands_page();

}  // namespace node

#endif
