#include "host/journal.hpp"

#include <dlfcn.h>

#include <cstdio>

#include "host/call.hpp"

namespace host {

std::string JournalEntry::text() const {
  std::string line = std::string(name_of(fn)) + "(" + arguments + ")";
  if (!result.empty()) {
    line += " = " + result;
  }
  return faulted ? line + " [fault]" : line;
}

void Journal::keep_only(std::initializer_list<Fn> functions) {
  kept_.fill(functions.size() == 0);
  for (const Fn fn : functions) {
    set_kept(fn, true);
  }
}

void Journal::leave_out(std::initializer_list<Fn> functions) {
  for (const Fn fn : functions) {
    set_kept(fn, false);
  }
}

std::vector<std::string> Journal::since(std::uint64_t mark) const {
  std::vector<std::string> texts;
  for (const JournalEntry &entry : entries_) {
    if (entry.number > mark) {
      texts.push_back(entry.text());
    }
  }
  return texts;
}

std::string Journal::name_of_function(const void *function) {
  if (function == nullptr) {
    return "null";
  }
  if (const auto known = names_.find(function); known != names_.end()) {
    return known->second;
  }
  Dl_info info{};
  // Without a symbol of its own a function is reported as the one before it.
  const bool exact =
      dladdr(function, &info) != 0 && info.dli_sname != nullptr && info.dli_saddr == function;
  std::string text = exact ? info.dli_sname : "fn#" + std::to_string(++nameless_);
  names_[function] = text;
  return text;
}

JournalEntry Journal::begin(Fn fn, u32 cid, u32 tick, std::string arguments) {
  JournalEntry entry;
  entry.number = ++total_;
  entry.fn = fn;
  entry.cid = cid;
  entry.tick = tick;
  entry.depth = depth_++;
  entry.arguments = std::move(arguments);
  if (capacity_ != 0) {
    if (entries_.size() >= capacity_) {
      entries_.pop_front();
    }
    entries_.push_back(entry);
  }
  return entry;
}

void Journal::end(JournalEntry entry, std::string result, bool faulted) {
  depth_ = entry.depth;
  entry.result = std::move(result);
  entry.faulted = faulted;
  // Entries are numbered without gaps, so a number leads to its place unless it was dropped.
  if (!entries_.empty() && entry.number >= entries_.front().number) {
    const std::uint64_t place = entry.number - entries_.front().number;
    if (place < entries_.size()) {
      entries_[static_cast<std::size_t>(place)] = entry;
    }
  }
  if (observer_) {
    observer_(entry);
  }
}

std::string format_text(const char *format, va_list arguments) noexcept {
  if (format == nullptr) {
    return "(null)";
  }
  char space[512];
  va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(space, sizeof space, format, arguments);
  std::string text;
  try {
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof space) {
      text.assign(space, static_cast<std::size_t>(length));
    } else if (length > 0) {
      text.resize(static_cast<std::size_t>(length) + 1);
      (void)std::vsnprintf(text.data(), text.size(), format, again);
      text.pop_back();
    }
  } catch (...) {
    text.clear();
  }
  va_end(again);
  return text;
}

std::string journal_code(u32 value) {
  char text[16];
  (void)std::snprintf(text, sizeof text, value == 0 ? "%x" : "0x%X", value);
  return text;
}

std::string journal_number(u32 value) {
  // Identifiers of classes, codes and masks are known by their hexadecimal form.
  constexpr u32 largest_plain = 0xFFFF;
  return value > largest_plain ? journal_code(value) : std::to_string(value);
}

std::string journal_text(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    const u8 byte = static_cast<u8>(c);
    if (c == '"' || c == '\\') {
      quoted += {'\\', c};
    } else if (c == '\r') {
      quoted += "\\r";
    } else if (c == '\n') {
      quoted += "\\n";
    } else if (c == '\t') {
      quoted += "\\t";
    } else if (byte < 0x20 || byte >= 0x7F) {
      char escape[8];
      (void)std::snprintf(escape, sizeof escape, "\\x%02X", byte);
      quoted += escape;
    } else {
      quoted += c;
    }
  }
  return quoted + "\"";
}

std::string journal_address(Node &node, const void *address) {
  if (address == nullptr) {
    return "null";
  }
  if (const Block *block = node.memory.find(address)) {
    return "block#" + std::to_string(block->number);
  }
  for (const Instance *instance : node.root.instances()) {
    if (address == &instance->record) {
      return "instance#" + std::to_string(instance->cid());
    }
  }
  return "&";
}

}  // namespace host
