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

void apply(node::Feed feed) {
  fuzz::Desk desk;
  if (!feed.is_recording()) {
    node::apply_feed(desk.node, feed.items);
    return;
  }
  std::ostringstream out;
  node::Console console(desk.node, out);
  node::Replay replay(std::move(feed), file);
  replay.watch(desk.node);
  replay.watch(console);
  try {
    replay.run(console);
  } catch (const node::InputError &error) {
    check_line(error);
  } catch (const node::ReplayDiffers &error) {
    check_line(error);
  }
  desk.node.inbound_observers.clear();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  std::istringstream text(std::string(reinterpret_cast<const char *>(bytes), size));
  node::Feed feed;
  try {
    feed = node::feed_from(text, file);
  } catch (const node::InputError &error) {
    check_line(error);
    return 0;
  }
  apply(std::move(feed));
  return 0;
}
