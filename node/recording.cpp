#include "node/recording.hpp"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "node/numerals.hpp"

namespace node {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char *kEntryNames[] = {"spec", "record",  "message",       "phase",
                                       "fid",  "service", "remote_answer", "unit"};

std::string line_of(const Json &json) {
  return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string entered_line(const Side &side, const host::Inbound &entry) {
  Json json = {{"entered", kEntryNames[static_cast<std::size_t>(entry.kind)]},
               {"board", hex(side.cid)},
               {"instance", hex(entry.cid)},
               {"id", hex(entry.id)}};
  if (!entry.name.empty()) {
    json["name"] = std::string(entry.name);
  }
  if (!entry.key.empty()) {
    json["key"] = hex_of_bytes(entry.key);
  }
  if (!entry.data.empty()) {
    json["data"] = hex_of_bytes(entry.data);
  }
  json["answer"] = hex(entry.answer);
  return line_of(json);
}

}  // namespace

Recorder::Recorder(const std::string &file) : stream_(file) {
  if (!stream_) {
    throw InputError(file + ": cannot be opened; expected a file to write the recording to");
  }
  stream_ << feed_header() << "\n";
}

void Recorder::watch(Node &node) {
  node.inbound_observers.push_back([this](const Side &side, const host::Inbound &entry) {
    stream_ << entered_line(side, entry) << "\n";
  });
}

void Recorder::watch(Console &console) {
  console.observe_lines([this](const std::string &line, Source source) {
    stream_ << line_of({{"command", line}, {"from", name_of(source)}}) << "\n" << std::flush;
  });
}

Replay::Replay(std::vector<FeedItem> items, std::string file)
    : items_(std::move(items)), file_(std::move(file)) {}

void Replay::watch(Node &node) {
  node.inbound_observers.push_back([this](const Side &side, const host::Inbound &entry) {
    entered_.push_back(entered_line(side, entry));
  });
}

void Replay::fail(unsigned line, const std::string &what) const {
  throw InputError(file_ + ":" + std::to_string(line) + ": " + what);
}

// What has entered since the last command, against what the recording has up to the next one.
void Replay::compare() {
  const unsigned cause = position_ == 0 ? 1 : items_[position_ - 1].line;
  for (const std::string &entered : entered_) {
    if (position_ == items_.size() || items_[position_].kind != FeedItem::Kind::entered) {
      fail(cause, "the replay differs: " + entered + " came on top; expected nothing more");
    }
    if (items_[position_].text != entered) {
      fail(items_[position_].line,
           "the replay differs: got " + entered + "; expected " + items_[position_].text);
    }
    ++position_;
  }
  if (position_ < items_.size() && items_[position_].kind == FeedItem::Kind::entered) {
    fail(items_[position_].line,
         "the replay differs: nothing came; expected " + items_[position_].text);
  }
  entered_.clear();
}

void Replay::run(Console &console) {
  compare();
  while (position_ < items_.size() && !console.quitting()) {
    const FeedItem &item = items_[position_++];
    try {
      if (item.kind == FeedItem::Kind::command) {
        console.run_line(item.text, item.source);
      } else {
        apply_feed(console.node(), {item});
      }
    } catch (const CommandError &error) {
      fail(item.line, error.what());
    }
    compare();
  }
}

}  // namespace node
