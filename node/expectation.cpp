#include "node/expectation.hpp"

#include <algorithm>
#include <sstream>

#include "node/numerals.hpp"

namespace node {
namespace {

// What was got is quoted up to here.
constexpr std::size_t kMostQuoted = 300;
constexpr std::size_t kMostListed = 8;

// How an expectation came out, and what there was instead.
struct Finding {
  bool met = false;
  std::string got;
};

// The text in quotes on one line.
std::string quoted(const std::string &text) {
  std::string line;
  for (const char c : text.substr(0, kMostQuoted)) {
    line += c == '\n' ? std::string("\\n") : std::string(1, c);
  }
  return "'" + line + (text.size() > kMostQuoted ? "..." : "") + "'";
}

std::string listed(const std::vector<std::string> &texts, const std::string &of_what) {
  if (texts.empty()) {
    return "no " + of_what;
  }
  std::string list;
  for (std::size_t position = 0; position < texts.size() && position < kMostListed; ++position) {
    list += (position == 0 ? "" : ", ") + quoted(texts[position]);
  }
  return texts.size() > kMostListed
             ? list + " and " + std::to_string(texts.size() - kMostListed) + " more"
             : list;
}

std::string trimmed(const std::string &text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

Finding find_text(Console &console, const Arguments &arguments) {
  const std::string text = as_text(console.script().last);
  return {text.find(arguments[0]) != std::string::npos, quoted(text)};
}

Finding find_line(Console &console, const Arguments &arguments) {
  const std::string text = as_text(console.script().last);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (trimmed(line) == trimmed(arguments[0])) {
      return {true, quoted(line)};
    }
  }
  return {false, quoted(text)};
}

// "PM_ERR_PARA (0x689383)" is also each of its halves; numbers are equal in either base.
bool same_value(const std::string &value, const std::string &wanted) {
  const auto number = number_of(value);
  const std::size_t bracket = value.find(" (");
  return value == wanted || (number && number == number_of(wanted)) ||
         (bracket != std::string::npos && value.back() == ')' &&
          (value.substr(0, bracket) == wanted ||
           value.substr(bracket + 2, value.size() - bracket - 3) == wanted));
}

bool compares(const std::string &value, const std::string &operation, const std::string &wanted) {
  if (operation == "=" || operation == "!=") {
    return same_value(value, wanted) == (operation == "=");
  }
  const auto left = number_of(value);
  const auto right = number_of(wanted);
  if (!left || !right) {
    throw CommandError("'" + operation + "' compares " + quoted(value) + " with " + quoted(wanted) +
                       "; expected two numbers");
  }
  if (operation == "<" || operation == ">=") {
    return (*left < *right) == (operation == "<");
  }
  if (operation == ">" || operation == "<=") {
    return (*left > *right) == (operation == ">");
  }
  throw CommandError("'" + operation + "' compares nothing; expected = != < > <= >=");
}

Finding find_field(Console &console, const Arguments &arguments) {
  const Answer &last = console.script().last;
  const auto value = field_of(last, arguments[0]);
  if (!value) {
    throw CommandError("wanted field '" + arguments[0] + "'; got " + fields_of(last));
  }
  const bool equals = arguments.size() == 2;
  return {compares(*value, equals ? "=" : arguments[1], arguments.back()), quoted(*value)};
}

Finding find_event(Console &console, const Arguments &arguments) {
  const Node &node = console.node();
  const auto since = static_cast<std::size_t>(std::min<std::uint64_t>(
      node.events_total() - console.script().before_last.events, node.events().size()));
  std::vector<std::string> texts;
  for (std::size_t position = node.events().size() - since; position < node.events().size();
       ++position) {
    texts.push_back(node.events()[position].text);
  }
  const bool met = std::any_of(texts.begin(), texts.end(), [&](const std::string &text) {
    return text.find(arguments[0]) != std::string::npos;
  });
  return {met, listed(texts, "events")};
}

u32 code_of(const std::string &text) {
#define NODE_RESULT_VALUE(name, value, meaning) \
  if (text == #name) return value;
  PM_RESULT_LIST(NODE_RESULT_VALUE)
#undef NODE_RESULT_VALUE
  return number_argument(text, 0, 0xFFFFFFFF, "value of an error record");
}

Finding find_error(Console &console, const Arguments &arguments) {
  const u32 wanted = code_of(arguments[0]);
  const auto &sides = console.node().sides();
  Finding finding;
  std::vector<std::string> values;
  for (std::size_t side = 0; side < sides.size(); ++side) {
    for (const u32 value :
         sides[side]->host.errors.values_since(console.script().before_last.errors[side])) {
      finding.met = finding.met || value == wanted;
      values.push_back(result_text(value));
    }
  }
  finding.got = listed(values, "error records");
  return finding;
}

Finding find_call(Console &console, const Arguments &arguments) {
  const host::Fn fn = function_argument(arguments[0]);
  const auto &sides = console.node().sides();
  const bool kept = std::any_of(sides.begin(), sides.end(),
                                [&](const auto &side) { return side->host.journal.wants(fn); });
  if (!kept) {
    throw CommandError("the journal does not keep " + arguments[0] +
                       "; expected 'journal on' and a filter that lets it through");
  }
  Finding finding;
  std::vector<std::string> texts;
  for (std::size_t side = 0; side < sides.size(); ++side) {
    for (const host::JournalEntry &entry : sides[side]->host.journal.entries()) {
      if (entry.number <= console.script().before_last.calls[side] || entry.fn != fn) {
        continue;
      }
      texts.push_back(entry.text());
      finding.met = finding.met || arguments.size() == 1 ||
                    texts.back().find(arguments[1]) != std::string::npos;
    }
  }
  finding.got = listed(texts, "such calls");
  return finding;
}

struct Kind {
  std::string_view name;
  std::size_t least_arguments;
  std::size_t most_arguments;
  Finding (*find)(Console &console, const Arguments &arguments);
};

constexpr Kind kKinds[] = {{"text", 1, 1, find_text},   {"line", 1, 1, find_line},
                           {"field", 2, 3, find_field}, {"event", 1, 1, find_event},
                           {"error", 1, 1, find_error}, {"call", 1, 2, find_call}};

std::string joined(const Arguments &words) {
  std::string text;
  for (const std::string &word : words) {
    text += (text.empty() ? "" : " ") + word;
  }
  return text;
}

void expect_failure(Console &console, const Arguments &command) {
  std::string got = "it was carried out";
  try {
    const Answer answer = console.perform(command);
    if (const auto result = field_of(answer, "result")) {
      if (*result != result_text(PM_OK)) {
        return;
      }
      got = "result ok";
    }
  } catch (const CommandError &error) {
    console.script().last = Answer().field("error", error.what());
    return;
  }
  throw CommandError("wanted '" + joined(command) + "' to fail; got " + got);
}

}  // namespace

void check_expectation(Console &console, const Arguments &arguments) {
  const bool negated = arguments[0] == "not";
  const Arguments rest(arguments.begin() + (negated ? 1 : 0), arguments.end());
  if (!negated && rest[0] == "fail") {
    expect_failure(console, {rest.begin() + 1, rest.end()});
    return;
  }
  const auto *kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                  [&](const Kind &entry) { return entry.name == rest[0]; });
  const Arguments values(rest.begin() + 1, rest.end());
  if (kind == std::end(kKinds) || values.size() < kind->least_arguments ||
      values.size() > kind->most_arguments) {
    throw CommandError("'" + joined(arguments) + "' can not be expected; see 'help expect'");
  }
  const Finding finding = kind->find(console, values);
  if (finding.met == negated) {
    throw CommandError("wanted " + joined(arguments) + "; got " + finding.got);
  }
}

}  // namespace node
