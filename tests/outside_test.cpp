// Every exported function called where it has nothing to work on: outside an instance, in one that
// has only been constructed, and in a full one with null pointers and zeroes. The functions and
// their parameters are read from the headers, so that none is missing.
#include <dlfcn.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "scenarios.hpp"

namespace {

struct Export {
  std::string name, result;
  std::string kinds;  // of its parameters: n number, p pointer, f function
};

std::vector<Export> exports() {
  std::vector<Export> all;
  const std::regex function(R"(PM_API ([\w ]+?[ *]+)(P[Mm]_\w+)\(([^)]*)\))"), comma(",");
  for (const auto &file : std::filesystem::directory_iterator(PM_SOURCE_DIR "/include")) {
    std::stringstream text;
    text << std::ifstream(file.path()).rdbuf();
    const std::string header = text.str();
    for (std::sregex_iterator at(header.begin(), header.end(), function), end; at != end; ++at) {
      Export one = {(*at)[2], (*at)[1], ""};
      const std::string parameters = (*at)[3];
      std::sregex_token_iterator parameter(parameters.begin(), parameters.end(), comma, -1), none;
      for (; parameters != "void" && parameter != none; ++parameter) {
        const std::string type = *parameter;
        one.kinds += type.find("Func ") != std::string::npos ? 'f'
                     : type.find('*') != std::string::npos   ? 'p'
                                                             : 'n';
      }
      all.push_back(one);
    }
  }
  return all;
}

// Where pointers lead to: a record of zeroes, which must stay so when a call fails.
alignas(16) u8 room[4096];

u32 do_nothing() {
  return PM_OK;
}

// Numbers and pointers are passed as machine words, as every target's calling convention does.
u32 call(const Export &one, bool nothing) {
  PmWord words[6] = {};
  for (std::size_t i = 0; i < one.kinds.size() && !nothing; ++i) {
    words[i] = one.kinds[i] == 'n'   ? 1
               : one.kinds[i] == 'p' ? reinterpret_cast<PmWord>(&room[512 * i])
                                     : reinterpret_cast<PmWord>(do_nothing);
  }
  void *address = dlsym(RTLD_DEFAULT, one.name.c_str());
  EXPECT_NE(address, nullptr) << one.name;
  using Function = PmWord (*)(PmWord, PmWord, PmWord, PmWord, PmWord, PmWord);
  const PmWord answer = reinterpret_cast<Function>(address)(words[0], words[1], words[2], words[3],
                                                            words[4], words[5]);
  return one.result == "void "                       ? 0
         : one.result.find('*') != std::string::npos ? answer != 0
         : one.result == "u16 "                      ? static_cast<u16>(answer)
                                                     : static_cast<u32>(answer);
}

std::string text_of(u32 code) {
#define PM_RESULT_TEXT(name, value, text) {value, #name},
  static const std::map<u32, std::string> names = {PM_RESULT_LIST(PM_RESULT_TEXT)};
#undef PM_RESULT_TEXT
  std::ostringstream text;
  text << std::hex << std::showbase << code;
  return names.count(code) != 0 ? names.at(code) : text.str();
}

enum class Place { outside, constructed, full };

// What the function answers there. A failure writes nothing, and nothing starves or is damaged.
std::string answer(const Export &one, Place place) {
  scenes::Stage stage;
  std::memset(room, 0, sizeof room);
  if (place == Place::full) {
    stage.full();
  } else {
    stage.publish_spec(scenes::Stage::counts);
    stage.construct();
  }
  if (place == Place::outside) {
    stage.scope.emplace(stage.node);
  }
  const u32 code = call(one, place == Place::full);
  const bool wrote = std::count(std::begin(room), std::end(room), 0) != sizeof room;
  EXPECT_FALSE(wrote && code != PM_OK) << one.name;
  EXPECT_EQ(stage.node.memory.check() + stage.node.watchdog.barks(), 0U) << one.name;
  return one.result == "void " ? " -" : " " + text_of(code);
}

TEST(Outside, EveryFunctionAnswersWithoutAnInstanceOrWithNothing) {
  std::set<std::string> answers, expected;
  for (const Export &one : exports()) {
    answers.insert(one.name + answer(one, Place::outside) + answer(one, Place::constructed) +
                   answer(one, Place::full));
  }
  std::ifstream table(PM_SOURCE_DIR "/tests/golden/outside.txt");
  std::string line;
  std::getline(table, line);  // the heading
  while (std::getline(table, line)) {
    expected.insert(line);
  }
  EXPECT_EQ(answers, expected);
}

}  // namespace
