// The picture of the front panel against the chassis it shows.
#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <sstream>

#include "node/console.hpp"
#include "node/panel.hpp"

namespace {

std::ptrdiff_t count_of(const std::string &picture, const std::string &pattern) {
  const std::regex wanted(pattern);
  return std::distance(std::sregex_iterator(picture.begin(), picture.end(), wanted), {});
}

TEST(NodePanel, ShowsEveryPortInItsStateAndEveryVirtualSystem) {
  node::Node node(node::load_chassis(PM_SOURCE_DIR "/examples/access_node.toml"),
                  {node::load_product(PM_PRODUCT_FILE)});
  node.start();
  std::ostringstream out;
  node::Console console(node, out);
  for (const char *line : {"link up 17", "link up 0/3/5", "link up 4096", "link up 48",
                           "board out 0/12", "ptp-remove 20", "vs-mask 18 0x3"}) {
    console.run_line(line);
  }
  const std::uint64_t recorded = node.active().host.errors.total();
  const node::Panel panel = node::panel_of(node);
  EXPECT_EQ(node.active().host.errors.total(), recorded) << "nothing that is gone is asked about";
  std::ostringstream drawn;
  node::draw(panel, drawn);
  const std::string picture = drawn.str().substr(drawn.str().find("</defs>"));
  const std::string ports = picture.substr(0, picture.find("<g class=\"legend\">"));
  const std::map<std::string, std::ptrdiff_t> counts = {
      {"frame", 2},           {"board", 32},      {"empty", 2},        {"port up", 2},
      {"port invisible", 45}, {"port absent", 5}, {"port unknown", 0}, {"port [a-z]+", 717},
      {"vs vs5", 6},          {"vs vs0", 1}};
  for (const auto &[element, expected] : counts) {
    EXPECT_EQ(count_of(ports, "<g class=\"" + element + "\">"), expected) << element;
  }
  EXPECT_NE(ports.find("0/0/17: up, PTP 17, ge<"), std::string::npos);
  EXPECT_NE(ports.find("0/1/0: down, PTP 1000, pon, 1/32 up behind it<"), std::string::npos);
}

TEST(NodePanel, EscapesNamesAndSaysWhatNoProductCanTell) {
  node::Chassis chassis = node::load_chassis(PM_SOURCE_DIR "/examples/desk.toml");
  chassis.name = "<script>&\"\x01\"</script>";
  chassis.kinds[0].name = "a & b, longer than a board is wide";
  node::Node node(std::move(chassis), {});
  node.start();
  std::ostringstream drawn;
  node::draw(node::panel_of(node), drawn);
  const std::string picture = drawn.str();
  EXPECT_EQ(count_of(picture, "&lt;script&gt;&amp;&quot;\\?&quot;&lt;/script&gt;"), 2);
  EXPECT_EQ(count_of(picture, "<script|&[^aglq]|\x01"), 0);
  EXPECT_EQ(count_of(picture, "<g class=\"port unknown\"><title>"), 22);
  std::ostringstream out;
  EXPECT_THROW(node::Console(node, out).run_line("panel /dev/full"), node::CommandError);
  EXPECT_THROW(node::Console(node, out).run_line("panel /none/x"), node::CommandError);
}

}  // namespace
