// Commands that make something happen to the node.
#include <sstream>

#include "node/console.hpp"
#include "node/feed.hpp"

namespace node {
namespace {

// Through the owner, which sends it on to every instance.
u32 link_event(Node &node, u16 primitive, u16 ptp) {
  u32 code = PM_OK;
  {
    const host::Scope scope(*node.active().instance);
    code = PM_LibLinkEventNotify(ptp, primitive == PM_PRIM_LINK_UP ? 1 : 0);
  }
  node.settle();
  return code;
}

Answer run_link(Console &console, const Arguments &arguments) {
  if (arguments[0] != "up" && arguments[0] != "down") {
    throw CommandError("'" + arguments[0] + "' is no link state; expected up or down");
  }
  const std::string way = arguments.size() > 2 ? arguments[2] : "message";
  if (way != "message" && way != "notify" && way != "owner") {
    throw CommandError("'" + way + "' is no way to deliver; expected notify or owner");
  }
  const u16 ptp = ptp_argument(console, arguments[1]);
  const u16 primitive = arguments[0] == "up" ? u16{PM_PRIM_LINK_UP} : u16{PM_PRIM_LINK_DOWN};
  Node &node = console.node();
  const u32 code = way == "message"  ? node.raise(primitive, ptp)
                   : way == "notify" ? node.notify(primitive, ptp)
                                     : link_event(node, primitive, ptp);
  return Answer()
      .field("ptp", ptp)
      .field("primitive", primitive)
      .field("delivered_by", way == "notify" ? "notification" : way)
      .field("result", result_text(code));
}

Answer run_publish(Console &console, const Arguments &arguments) {
  const u32 class_id = number_argument(arguments[0], 0, 0xFFFFFFFF, "data class");
  const u32 key = number_argument(arguments[1], 0, 0xFFFFFFFF, "key");
  const host::Bytes data = bytes_argument(arguments[2], "record");
  const u32 code = console.node().publish(class_id, host::bytes_of_u32(key), data);
  return Answer()
      .field("class", Hex{class_id})
      .field("name", class_name_of(class_id))
      .field("key", key)
      .field("bytes", data.size())
      .field("result", result_text(code));
}

Answer run_feed(Console &console, const Arguments &arguments) {
  const std::string &file = arguments[0];
  const auto content = console.machine().content_of(file);
  if (!content) {
    throw CommandError(file + ": cannot be read; expected a feed");
  }
  // A damaged feed is a fault of this line of the script, which says where the feed is damaged.
  Feed feed;
  try {
    std::istringstream lines(*content);
    feed = feed_from(lines, file);
  } catch (const InputError &error) {
    throw CommandError(error.what());
  }
  if (feed.is_recording()) {
    throw CommandError(file + " is a recording; expected it behind --feed");
  }
  return Answer()
      .field("applied", feed.items.size())
      .field("refused", apply_feed(console.node(), feed.items));
}

constexpr Command kCommands[] = {
    {"link", "up|down ID|FRAME/SLOT/PORT [notify|owner]", "a port's link comes up or goes down",
     "  Delivered to the active instance as a primitive message; with 'notify' to every instance\n"
     "  as a notification of the data distribution, with 'owner' as a link event that the owner "
     "of\n"
     "  the PTP database sends on to every instance.",
     2, 3, run_link},
    {"publish", "CLASS KEY DATA", "a record arrives from the system",
     "  CLASS and KEY are numbers, DATA the record's bytes in hexadecimal digits. Every board "
     "gets\n  the record, a static record (0x360030) the active one only.",
     3, 3, run_publish},
    {"feed", "FILE", "apply a file of records and messages", "  See docs/feed.md.", 1, 1,
     run_feed}};

}  // namespace

std::span<const Command> change_commands() {
  return kCommands;
}

}  // namespace node
