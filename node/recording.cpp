#include "node/recording.hpp"

#include <algorithm>

#include "node/feed_line.hpp"
#include "node/figures.hpp"
#include "node/numerals.hpp"

namespace node {
namespace {

using Json = FeedLine::Json;

// For complaints, which are no recordings.
constexpr auto kReplace = Json::error_handler_t::replace;

std::string entered_line(const Side &side, const host::Inbound &entry) {
  Json json = {{"entered", kEntryNames[static_cast<std::size_t>(entry.kind)]},
               {"board", hex(side.cid)},
               {"instance", hex(entry.cid)},
               {"id", hex(entry.id)}};
  if (!entry.name.empty()) {
    json["name"] = json_of_text(std::string(entry.name));
  }
  if (!entry.key.empty()) {
    json["key"] = hex_of_bytes(entry.key);
  }
  if (!entry.data.empty()) {
    json["data"] = hex_of_bytes(entry.data);
  }
  json["answer"] = hex(entry.answer);
  return json.dump();
}

}  // namespace

Recorder::Recorder(const std::string &file) : stream_(file) {
  if (!stream_) {
    throw InputError(file + ": cannot be opened; expected a file to write the recording to");
  }
  stream_ << recording_header() << "\n";
}

void Recorder::watch(Node &node) {
  node.inbound_observers.push_back([this](const Side &side, const host::Inbound &entry) {
    stream_ << entered_line(side, entry) << "\n";
  });
}

void Recorder::watch(Console &console) {
  console.observe_lines([this](const std::string &line, Source source) {
    stream_ << Json{{"command", json_of_text(line)}, {"from", name_of(source)}}.dump() << "\n"
            << std::flush;
  });
  Machine &machine = console.machine();
  machine.content_of = [this, inner = machine.content_of](const std::string &file) {
    std::optional<std::string> content = inner(file);
    Json json = {{"file", json_of_text(file)}};
    if (content) {
      json["content"] = json_of_text(*content);
    }
    stream_ << json.dump() << "\n";
    return content;
  };
  machine.settle_figures = [this, inner = machine.settle_figures](Answer &answer) {
    inner(answer);
    Json figures = Json::array();
    for (const std::string &figure : figures_of(answer)) {
      figures.push_back(json_of_text(figure));
    }
    if (!figures.empty()) {
      stream_ << Json{{"figures", std::move(figures)}}.dump() << "\n";
    }
  };
}

Replay::Replay(Feed feed, std::string file) : feed_(std::move(feed)), file_(std::move(file)) {}

void Replay::watch(Node &node) {
  node.inbound_observers.push_back([this](const Side &side, const host::Inbound &entry) {
    entered_.push_back(entered_line(side, entry));
  });
}

void Replay::watch(Console &console) {
  if (feed_.version < kSelfContainedVersion) {
    return;
  }
  console.machine().content_of = [this](const std::string &file) {
    const FeedItem &item = take(FeedItem::Kind::file, "the file " + file);
    if (item.text != file) {
      fail(item.line, "the replay differs: got the file " + file + "; expected " + item.text);
    }
    return item.content;
  };
  console.machine().settle_figures = [this](Answer &answer) {
    const std::vector<std::string> own = figures_of(answer);
    if (own.empty()) {
      return;
    }
    const FeedItem &item = take(FeedItem::Kind::figures, "figures of the machine");
    if (!put_figures(answer, item.figures, feed_.bits == kBits)) {
      fail(item.line, "the replay differs: got " + Json(own).dump(-1, ' ', false, kReplace) +
                          "; expected " + Json(item.figures).dump(-1, ' ', false, kReplace));
    }
  };
}

void Replay::fail(unsigned line, const std::string &what) const {
  throw ReplayDiffers(file_ + ":" + std::to_string(line) + ": " + what);
}

bool Replay::at(FeedItem::Kind kind) const {
  return position_ < feed_.items.size() && feed_.items[position_].kind == kind;
}

// What has entered so far, against what the recording has at its position.
void Replay::compare_entered() {
  const unsigned cause = position_ == 0 ? 1 : feed_.items[position_ - 1].line;
  for (const std::string &entered : entered_) {
    if (!at(FeedItem::Kind::entered)) {
      fail(cause, "the replay differs: " + entered + " came on top; expected nothing more");
    }
    const FeedItem &item = feed_.items[position_];
    if (item.text != entered) {
      fail(item.line, "the replay differs: got " + entered + "; expected " + item.text);
    }
    ++position_;
  }
  entered_.clear();
}

// The same at the end of a command, when nothing more comes.
void Replay::compare() {
  compare_entered();
  const auto left = [&](FeedItem::Kind kind, const std::string &what) {
    if (at(kind)) {
      fail(feed_.items[position_].line, "the replay differs: nothing came; expected " + what);
    }
  };
  left(FeedItem::Kind::entered,
       position_ < feed_.items.size() ? feed_.items[position_].text : std::string());
  left(FeedItem::Kind::file, "a file to be read");
  left(FeedItem::Kind::figures, "figures of the machine");
}

// What the recording keeps of its machine at this point.
const FeedItem &Replay::take(FeedItem::Kind kind, const std::string &got) {
  compare_entered();
  if (!at(kind)) {
    const bool at_end = position_ == feed_.items.size();
    fail(feed_.items[at_end ? position_ - 1 : position_].line,
         "the replay differs: got " + got + "; expected something else");
  }
  return feed_.items[position_++];
}

void Replay::run(Console &console) {
  compare();
  while (position_ < feed_.items.size() && !console.quitting()) {
    const FeedItem &item = feed_.items[position_++];
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
