// Answers for programs: the fields of every command are those of docs/json.md, and no others; and
// the pages about commands and options, which are made from the same lists, are up to date.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "node/commands_page.hpp"
#include "node/console.hpp"
#include "node_program.hpp"

namespace {

using program::run;
using testing::HasSubstr;
using Fields = std::map<std::string, std::string>;  // type by "COMMAND FIELD"

std::string content_of(const std::string &file) {
  std::ostringstream content;
  content << std::ifstream(PM_SOURCE_DIR "/" + file).rdbuf();
  return content.str();
}

std::string type_of(const nlohmann::json &value) {
  return value.is_boolean() ? "flag" : value.is_number() ? "number" : "text";
}

// The tables below "## `COMMAND`"; those below another title go for every command.
Fields documented() {
  Fields fields;
  std::string command = "any";
  std::istringstream lines(content_of("docs/json.md"));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string first, name, bar, type;
    words >> first >> name >> bar;
    std::getline(words, type, '|');
    if (first == "##") {
      command = name[0] == '`' ? name.substr(1, name.size() - 2) : "any";
    } else if (first == "|" && name[0] == '`') {
      fields[command + " " + name.substr(1, name.size() - 2)] = type;
    }
  }
  return fields;
}

void observe(const std::string &command, const nlohmann::json &answer, const Fields &known,
             std::set<std::string> &seen) {
  const auto see = [&](const std::string &name, const std::string &type) {
    std::string key = "any " + name;
    key = known.contains(key) ? key : command + " " + name;
    seen.insert(key);
    ASSERT_TRUE(known.contains(key)) << key << " is not documented: " << answer;
    EXPECT_THAT(known.at(key), HasSubstr(type)) << key << ": " << answer;
  };
  for (const auto &[name, value] : answer.items()) {
    if (!value.is_array()) {
      see(name, type_of(value));
      continue;
    }
    for (const auto &row : value) {
      if (!row.is_object()) {
        see(name + "[]", type_of(row));
        continue;
      }
      for (const auto &[column, cell] : row.items()) see(name + "[]." + column, type_of(cell));
    }
  }
}

TEST(NodeJson, TheFieldsOfEveryCommandAreThoseOfTheDocument) {
  const Fields known = documented();
  std::set<std::string> seen;
  std::set<std::string> commands;
  const std::pair<std::string, std::vector<std::string>> sessions[] = {
      {"access_node", {"examples/life.pmn"}},
      {"desk", {"examples/queries.pmn", "tests/scripts/standby.pmn", "tests/scripts/faults.pmn"}}};
  for (const auto &[chassis, scripts] : sessions) {
    for (const std::string &script : scripts) {
      const auto outcome = run("--json --chassis examples/" + chassis +
                               ".toml --product " PM_PRODUCT_FILE " --script " + script);
      ASSERT_EQ(outcome.code, 0) << outcome.output;
      std::istringstream lines(outcome.output);
      for (std::string line; std::getline(lines, line);) {
        const auto answer = nlohmann::json::parse(line);
        std::string command;
        std::istringstream(answer["line"].get<std::string>()) >> command;
        commands.insert(command);
        observe(command, answer, known, seen);
      }
    }
  }
  for (const auto &[name, type] : known) EXPECT_TRUE(seen.contains(name)) << name << " never came";
  for (const node::Command &command : node::commands()) {
    // What closes a block has no answer of its own.
    EXPECT_TRUE(command.name == "end" || commands.contains(std::string(command.name)))
        << command.name;
  }
}

TEST(NodePages, HelpManualAndDocumentAreOfOneMind) {
  const std::string page = content_of("docs/commands.md");
  const std::string manual = content_of("docs/man/pmnode.1");
  EXPECT_EQ(run("--help-commands").output, page) << "pmnode --help-commands prints the new page";
  EXPECT_EQ(run("--man").output, manual) << "pmnode --man prints the new manual";
  std::istringstream options(run("--help").output);
  std::size_t count = 0;
  for (std::string line; std::getline(options, line);) {
    std::string word;
    std::istringstream(line) >> word;
    word = word.starts_with("-h,") ? word.substr(3) : word;
    if (!word.starts_with("--")) continue;
    EXPECT_THAT(manual, HasSubstr("\n.It Fl -" + word.substr(2)));
    ++count;
  }
  EXPECT_GE(count, 10u);
  std::string input;
  for (const node::Command &command : node::commands()) {
    input += "help " + std::string(command.name) + "\\n";
  }
  std::istringstream helps(
      run("--chassis examples/desk.toml --product " PM_PRODUCT_FILE, input).output);
  std::string line;
  while (std::getline(helps, line) && !line.starts_with("command ")) {
  }
  for (; helps; std::getline(helps, line)) {
    const bool is_field = line.starts_with("command ") || line.starts_with("arguments ") ||
                          line.starts_with("what it does ");
    const std::string text =
        is_field ? line.substr(14) : line.substr(std::min<std::size_t>(line.size(), 2));
    if (text == "none") continue;
    EXPECT_THAT(page, HasSubstr(text));
    EXPECT_THAT(manual, HasSubstr(text));
  }
}

}  // namespace
