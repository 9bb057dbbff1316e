// A recorded (source, line) pair names one statement: every file of a group has a line base of its
// own, is shorter than the distance between bases, and stands in its group's folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <string>

namespace {

TEST(SourcePlaces, LeadBackToOneStatement) {
  const std::filesystem::path folder =
      std::filesystem::path(PM_SOURCE_DIR) / "frame/lib/emp/src/pm";
  const std::regex source("PM_SOURCE\\((\\w+), (\\d+)\\);");
  std::map<std::string, std::filesystem::path> owners;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".cpp") {
      continue;
    }
    std::ifstream file(entry.path());
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::smatch match;
    if (!std::regex_search(text, match, source)) {
      EXPECT_FALSE(std::regex_search(text, std::regex("RECORD\\(|FAIL\\(|PASS_UP\\(")))
          << entry.path();
      continue;
    }
    EXPECT_EQ(match[1].str(), entry.path().parent_path().filename().string()) << entry.path();
    EXPECT_LT(std::count(text.begin(), text.end(), '\n'), 1000) << entry.path();
    const auto [owner, is_new] = owners.emplace(match[0].str(), entry.path());
    EXPECT_TRUE(is_new) << entry.path() << " has the line base of " << owner->second;
  }
  EXPECT_GT(owners.size(), 20U);
}

}  // namespace
