#include "node/options.hpp"

#include <CLI/CLI.hpp>
#include <iostream>

#include "node/commands_page.hpp"
#include "node/document.hpp"

namespace node {

std::optional<Options> read_options(int count, char **arguments) {
  Options options;
  CLI::App app{"Brings up a node of a chassis file and answers commands about it.", "pmnode"};
  app.add_option("--chassis", options.chassis, "What the node consists of (docs/chassis_file.md)")
      ->required()
      ->type_name("FILE");
  app.add_option("--product", options.products,
                 "A product's shared object to load (include/pm_product.h); may be repeated")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--feed", options.feed,
                 "Records and messages to apply after the start (docs/feed.md)")
      ->type_name("FILE");
  app.add_option("--script", options.script,
                 "Commands to carry out, one a line; at a terminal the prompt follows")
      ->type_name("FILE");
  app.add_option("--record", options.record,
                 "Where everything that enters the library is kept, to be replayed with --feed")
      ->type_name("FILE");
  app.add_option("--journal", options.journal, "Where every host call is written, one a line")
      ->type_name("FILE");
  app.add_flag_callback(
         "--help-commands", [] { throw CLI::CallForAllHelp(); },
         "Print the commands as a page of Markdown")
      ->trigger_on_parse();
  CLI::App *panel = app.add_subcommand(
      "panel", "Draw the front panel after the feed and the script, and end; other options follow");
  panel->add_option("FILE", options.panel, "The SVG picture to write")->required();
  panel->fallthrough();
  app.footer(
      "Without a script, commands are read from the standard input; 'help' lists them.\n"
      "'pmnode soak' lives a random life of a node and checks it; 'pmnode soak --help' tells how.\n"
      "Exit codes: 0 done, 1 a command of the script or the start-up failed, 2 bad input.");
  try {
    app.parse(count, arguments);
  } catch (const CLI::CallForHelp &) {
    std::cout << app.help();
    return std::nullopt;
  } catch (const CLI::CallForAllHelp &) {
    std::cout << commands_page();
    return std::nullopt;
  } catch (const CLI::ParseError &error) {
    throw InputError(std::string("pmnode: ") + error.what() + "; expected what --help tells");
  }
  return options;
}

}  // namespace node
