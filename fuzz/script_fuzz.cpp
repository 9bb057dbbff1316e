// Scripts: every command with any arguments. The first mistake ends a script with one line; nothing
// that a script can ask for damages the node.
#include <regex>
#include <sstream>

#include "fuzz/desk.hpp"
#include "node/console.hpp"

namespace {

constexpr const char *file = "fuzz.pmn";

// Scripts that would only take long: more than nine repetitions, blocks in blocks, other files.
bool is_lengthy(const std::string &text) {
  static const std::regex lengthy(
      "feed|repeat(?!\\s+[0-9](\\s|$))|repeat[^]*repeat[^]*repeat[^]*repeat");
  return std::regex_search(text, lengthy);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  const std::string text(reinterpret_cast<const char *>(bytes), size);
  if (is_lengthy(text)) {
    return -1;
  }
  std::istringstream script(text);
  std::ostringstream out;
  fuzz::Desk desk;
  node::Console console(desk.node, out);
  try {
    console.run_script(script, file, true);
  } catch (const node::InputError &error) {
    HOLDS(std::string(error.what()).rfind("fuzz.pmn:", 0) == 0);
  }
  return 0;
}
