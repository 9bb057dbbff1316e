#include "node/soak_stage.hpp"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "node/soak_address.hpp"

namespace soak {

Stage *current_stage = nullptr;

namespace {

constexpr u32 kLowestAddress = 65'536;

void append_number(std::string &text, u32 value) {
  if (value >= kLowestAddress) {
    if (const u32 number = address_number(value)) {
      text.append(" &").append(std::to_string(number));
      return;
    }
  }
  char digits[16];
  const int base = value < kLowestAddress ? 10 : 16;
  const auto end = std::to_chars(digits, digits + sizeof digits, value, base).ptr;
  text.append(base == 16 ? " 0x" : " ");
  text.append(digits, end);
}

// The address of a parameter differs between the stages; whether there is one does not.
std::string without_addresses(std::string text) {
  constexpr std::string_view mark = "Para = 0x0x";
  for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + 1)) {
    const std::size_t from = at + mark.size() - 2;
    const std::size_t end = text.find_first_of(" ,", from);
    text.replace(from, (end == std::string::npos ? text.size() : end) - from, "&");
  }
  return text;
}

constexpr const char *kPartitions[] = {"static", "block", "dynamic"};

}  // namespace

Stage::Stage(const Player &player_, bool portable_) : player(player_), portable(portable_) {
  constexpr u8 slots = 4;
  for (host::Node &node : nodes) {
    node.chassis.add_frame(0, slots);
    node.chassis.add_frame(1, slots);
    host::Board small = host::Board::of("ETH8", 8, 1);
    small.port(2).type = host::port_type_none;
    small.port(3).lan_switch = true;
    small.port(4).e_switch = true;
    small.port(8).type = host::port_type_none;
    node.chassis.insert(0, 0, small);
    node.chassis.insert(0, 2, host::Board::of("PON33", 33, 3));
    node.chassis.insert(1, 1, small);
    node.chassis.insert(1, 3, host::Board::of("WIDE", 200, 100));
    node.errors.set_capacity(0);
    node.debug.set_capacity(0);
    node.errors.set_sink([this](const host::ErrorRecord &record) {
      say("record", {record.value});
      said.back() = ' ';
      said.append(record.file).push_back('\n');
    });
    node.debug.set_sink([this](const host::Line &line) {
      say(host::name_of(line.printer), {line.selector});
      said.back() = ' ';
      said.append(with_numbers(without_addresses(line.text)));
      for (const u32 number : line.numbers) {
        append_number(said, number);
      }
      said.push_back('\n');
    });
    node.root.set_resolver(player.service);
    node.clock.set(0xFFFFFFFF - 5'000);  // the tick counter wraps on the way
    node.owner.set_virtual_range(40, 45);
  }
  nodes[0].owner.serve(nodes[1]);
}

void Stage::say(const char *what, std::initializer_list<u32> values) {
  said.append(what);
  for (const u32 value : values) {
    append_number(said, value);
  }
  said.push_back('\n');
}

void Stage::say_bytes(const char *what, const void *bytes, std::size_t size) {
  constexpr char digits[] = "0123456789abcdef";
  said.append(what).push_back(' ');
  for (std::size_t i = 0; i < size; ++i) {
    const u8 byte = static_cast<const u8 *>(bytes)[i];
    said.push_back(digits[byte >> 4]);
    said.push_back(digits[byte & 15]);
  }
  said.push_back('\n');
}

// A value that carries an address has the width of one.
void Stage::say_parameter(const host::SentParameter &sent) {
  u32 word = 0;
  std::copy_n(sent.bytes.data(), std::min(sent.bytes.size(), sizeof word),
              reinterpret_cast<u8 *>(&word));
  if (sent.length == sizeof(PmWord) && address_number(word) != 0) {
    say("  parameter", {sent.kind, word});
    return;
  }
  say("  parameter", {sent.kind, sent.length, sent.null ? 1U : 0U});
  say_bytes("  ", sent.bytes.data(), sent.bytes.size());
}

void Stage::say_slots(const PmSubCallBack &slots) {
  PmWord words[sizeof slots / sizeof(PmWord)];
  std::memcpy(words, &slots, sizeof words);
  said.append("  slots");
  for (const PmWord word : words) {
    append_number(said, static_cast<u32>(word));
  }
  said.push_back('\n');
}

void Stage::watch_calls(bool on) {
  for (host::Node &node : nodes) {
    if (on) {
      node.journal.start();
    } else {
      node.journal.stop();
      for (const host::JournalEntry &entry : node.journal.entries()) {
        said.append(entry.text()).push_back('\n');
      }
      node.journal.clear();
    }
  }
}

void Stage::say_host_effects() {
  for (host::Node &node : nodes) {
    for (const host::ObjectChange &change : node.objects.log()) {
      say(change.added ? "object added" : "object deleted",
          {change.id.vs, change.id.type, change.id.ptp, change.flags[0], change.flags[1]});
    }
    node.objects.clear_log();
    for (const host::SentCall &call : node.rpc.sent()) {
      say(call.service.c_str(),
          {call.synchronous ? 1U : 0U, call.destination, call.cid, call.code, call.answer});
      for (const host::SentParameter &sent : call.parameters) {
        say_parameter(sent);
      }
    }
    node.rpc.clear_sent();
    for (u32 number = 1; number <= 3; ++number) {
      const host::PartitionUse &use = node.memory.use(number);
      say(kPartitions[number - 1],
          {static_cast<u32>(use.blocks), portable ? 0 : static_cast<u32>(use.bytes)});
    }
    for (std::size_t &told = slow_calls[side_of(node)]; told < node.debug.long_calls().size();
         ++told) {
      const host::LongCall &call = node.debug.long_calls()[told];
      say("slow call", {call.ticks, call.prim_type});
      said.append("  ").append(call.function).append(" " + call.file + "\n");
    }
    say("ticks", {node.clock.now()});
    for (const host::Misuse &misuse : node.misuses) {
      said.append("misuse ").append(host::name_of(misuse.kind)).append(" " + misuse.text + "\n");
    }
    if (node.watchdog.barks() != 0) {
      say("watchdog barked", {});
      node.watchdog.clear();
    }
  }
  for (const host::Instance *each : instances) {
    if (each != nullptr) {
      say("marked", {static_cast<u32>(nodes[0].syn.marked(*each)), each->active ? 1U : 0U});
    }
  }
}

void Stage::remove_instance() {
  host::Instance *gone = instance();
  if (gone == nullptr) {
    return;
  }
  for (host::Node &each : nodes) {
    each.syn.forget(*gone);
  }
  say("destructed", {node().root.destruct(gone->cid())});
  instances[side] = nullptr;
}

}  // namespace soak
