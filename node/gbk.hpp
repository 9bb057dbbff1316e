// The debug window's character set. Its texts are ASCII but for a few full-width signs in GBK.
#ifndef NODE_GBK_HPP
#define NODE_GBK_HPP

#include <string>
#include <string_view>

namespace node {

// Full-width ASCII and what is UTF-8 already become UTF-8; any other byte that a terminal can't
// show stands as "\xA3".
std::string as_utf8(std::string_view bytes);

}  // namespace node

#endif
