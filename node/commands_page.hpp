// docs/commands.md, which is printed from the commands themselves.
#ifndef NODE_COMMANDS_PAGE_HPP
#define NODE_COMMANDS_PAGE_HPP

#include <string>

namespace node {

std::string commands_page();

// How commands are written, as a paragraph of Markdown; the manual page has it too.
extern const char *const commands_in_short;

}  // namespace node

#endif
