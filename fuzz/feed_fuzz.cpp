// Feeds and recordings: a damaged one is refused with its line before anything of it is applied,
// and what it delivers harms nobody.
#include <sstream>

#include "fuzz/desk.hpp"
#include "node/console.hpp"
#include "node/feed.hpp"
#include "node/recording.hpp"

namespace {

constexpr const char *file = "fuzz.jsonl";

void check_line(const std::exception &error) {
  HOLDS(std::string(error.what()).rfind("fuzz.jsonl:", 0) == 0);
}

void apply(std::vector<node::FeedItem> items) {
  fuzz::Desk desk;
  if (!node::is_recording(items)) {
    node::apply_feed(desk.node, items);
    return;
  }
  std::ostringstream out;
  node::Console console(desk.node, out);
  node::Replay replay(std::move(items), file);
  replay.watch(desk.node);
  try {
    replay.run(console);
  } catch (const node::InputError &error) {
    check_line(error);
  }
  desk.node.inbound_observers.clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  std::istringstream text(std::string(reinterpret_cast<const char *>(bytes), size));
  std::vector<node::FeedItem> items;
  try {
    items = node::feed_from(text, file);
  } catch (const node::InputError &error) {
    check_line(error);
    return 0;
  }
  apply(std::move(items));
  return 0;
}
