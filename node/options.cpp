#include "node/options.hpp"

#include <CLI/CLI.hpp>
#include <iostream>

#include "node/commands_page.hpp"
#include "node/document.hpp"
#include "node/feed.hpp"
#include "node/manual.hpp"

namespace node {
namespace {

constexpr const char *kWhat = "Brings up a node of a chassis file and answers commands about it";

// Something to be printed was asked for instead of a node.
struct PageWanted {
  std::string (*page)(const CLI::App &app);
};

OptionGroup group_of(const CLI::App &app, std::string subcommand) {
  OptionGroup group{std::move(subcommand), app.get_description(), {}};
  for (const CLI::Option *option : app.get_options()) {
    if (!group.subcommand.empty() && option == app.get_help_ptr()) {
      continue;
    }
    const bool takes_value = option->get_items_expected_max() != 0;
    OptionText text;
    text.name = option->nonpositional() ? "--" + option->get_lnames().front() : "";
    text.value = text.name.empty() ? option->get_name(true) : option->get_type_name();
    text.value = takes_value ? text.value : "";
    text.what = option->get_description();
    text.required = option->get_required();
    text.repeated = option->get_items_expected_max() > 1;
    group.options.push_back(std::move(text));
  }
  return group;
}

std::string manual_of(const CLI::App &app) {
  std::vector<OptionGroup> groups{group_of(app, "")};
  groups.front().what.clear();  // the manual describes the program at length
  for (const CLI::App *subcommand : app.get_subcommands({})) {
    groups.push_back(group_of(*subcommand, subcommand->get_name()));
  }
  return manual_page(groups);
}

void add_page(CLI::App &app, const char *name, const char *what,
              std::string (*page)(const CLI::App &app)) {
  app.add_flag_callback(
         name, [page] { throw PageWanted{page}; }, what)
      ->trigger_on_parse();
}

}  // namespace

std::optional<Options> read_options(int count, char **arguments) {
  Options options;
  CLI::App app{kWhat, "pmnode"};
  app.set_help_flag("-h,--help", "Print this help and end");
  app.add_option("--chassis", options.chassis, "What the node consists of (docs/chassis_file.md)")
      ->required()
      ->type_name("FILE");
  app.add_option("--product", options.products,
                 "A product's shared object to load (include/pm_product.h); may be repeated")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--feed", options.feed,
                 "Records and messages to apply after the start, or a recording to be replayed "
                 "(docs/feed.md)")
      ->type_name("FILE");
  app.add_option("--script", options.script,
                 "Commands to carry out, one a line; at a terminal the prompt follows "
                 "(docs/scripts.md)")
      ->type_name("FILE");
  app.add_option("--record", options.record,
                 "Where everything that enters the library is kept, to be replayed with --feed")
      ->type_name("FILE");
  app.add_option("--journal", options.journal, "Where every host call is written, one a line")
      ->type_name("FILE");
  app.add_flag("--json", options.json,
               "Answer every line with one line of JSON and print nothing else (docs/json.md)");
  add_page(app, "--version", "Print version and width, which that of products has to be",
           [](const CLI::App &) {
             return "pmnode " PM_VERSION ", " + std::to_string(kBits) + " bits\n";
           });
  add_page(app, "--help-commands", "Print the commands as a page of Markdown",
           [](const CLI::App &) { return commands_page(); });
  add_page(app, "--man", "Print the manual page of this program", manual_of);
  CLI::App *panel = app.add_subcommand(
      "panel", "Draw the front panel after the feed and the script, and end; other options follow");
  panel->add_option("FILE", options.panel, "The SVG picture to write")->required();
  panel->fallthrough();
  app.footer(
      "Without a script, commands are read from the standard input; 'help' lists them.\n"
      "'pmnode soak' lives a random life of a node and checks it; 'pmnode soak --help' tells how.\n"
      "Exit codes: 0 done, 1 a command of the script or the start-up failed, 2 bad input.\n");
  try {
    app.parse(count, arguments);
  } catch (const CLI::CallForHelp &) {
    std::cout << app.help();
    return std::nullopt;
  } catch (const PageWanted &wanted) {
    std::cout << wanted.page(app);
    return std::nullopt;
  } catch (const CLI::ParseError &error) {
    throw InputError(std::string("pmnode: ") + error.what() + "; expected what --help tells");
  }
  return options;
}

}  // namespace node
