// pmnode: a node of a chassis file on a workstation.
#include <unistd.h>

#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>

#include "node/console.hpp"
#include "node/crash.hpp"
#include "node/document.hpp"
#include "node/feed.hpp"
#include "node/journal_file.hpp"
#include "node/line_editor.hpp"
#include "node/options.hpp"
#include "node/recording.hpp"
#include "node/soak.hpp"
#include "node/start_view.hpp"

namespace {

enum ExitCode { kDone = 0, kFailed = 1, kBadInput = 2 };

int complain(const std::exception &error, ExitCode code) {
  std::cout << std::flush;
  std::cerr << error.what() << "\n";
  return code;
}

// Everything that was asked for, read and checked before anything is started.
struct Inputs {
  node::Chassis chassis;
  std::ifstream script;
  std::unique_ptr<node::JournalFile> journal;
  std::unique_ptr<node::Recorder> recorder;
  std::unique_ptr<node::Replay> replay;
  std::vector<node::Product> products;
};

Inputs read_inputs(const node::Options &options) {
  Inputs inputs;
  inputs.chassis = node::load_chassis(options.chassis);
  if (!options.feed.empty()) {
    node::Feed feed = node::read_feed(options.feed);
    if (feed.is_recording()) {
      inputs.replay = std::make_unique<node::Replay>(std::move(feed), options.feed);
    }
  }
  if (!options.script.empty()) {
    inputs.script = node::open_input(options.script, "a script");
  }
  if (!options.journal.empty()) {
    inputs.journal = std::make_unique<node::JournalFile>(options.journal);
  }
  if (!options.record.empty()) {
    inputs.recorder = std::make_unique<node::Recorder>(options.record);
  }
  for (const std::string &file : options.products) {
    inputs.products.push_back(node::load_product(file));
  }
  return inputs;
}

void converse(node::Console &console, Inputs &inputs, const node::Options &options) {
  const bool terminal = isatty(STDIN_FILENO) == 1;
  if (isatty(STDOUT_FILENO) == 1) {
    console.show_on_terminal();
  }
  if (!options.script.empty()) {
    console.run_script(inputs.script, options.script, true);
    if (options.panel.empty() && (console.quitting() || !terminal)) {
      return;
    }
    std::cout << (options.json ? "" : "\n");
  }
  if (!options.panel.empty()) {
    console.run_line("panel " + node::quoted_word(options.panel), node::Source::pipe);
    return;
  }
  if (terminal) {
    node::LineEditor editor;
    console.run_prompt([&editor](const std::string &prompt) { return editor.read(prompt); });
  } else {
    console.run_script(std::cin, "standard input", false);
  }
}

int run(const node::Options &options) {
  node::report_crashes();
  Inputs inputs;
  try {
    inputs = read_inputs(options);
  } catch (const node::InputError &error) {
    return complain(error, kBadInput);
  }
  try {
    node::Node node(std::move(inputs.chassis), std::move(inputs.products));
    if (inputs.journal) {
      inputs.journal->watch(node);
    }
    if (inputs.recorder) {
      inputs.recorder->watch(node);
    }
    if (inputs.replay) {
      inputs.replay->watch(node);
    }
    node.start(options.json ? node::StartReport{}
                            : node::start_view(std::cout, isatty(STDOUT_FILENO) == 1));
    node::Console console(node, std::cout);
    if (options.json) {
      console.answer_in_json();
    }
    if (inputs.replay) {
      inputs.replay->watch(console);
    }
    if (inputs.recorder) {
      inputs.recorder->watch(console);
    }
    if (inputs.replay) {
      inputs.replay->run(console);
    } else if (!options.feed.empty()) {
      console.run_line("feed " + node::quoted_word(options.feed), node::Source::pipe);
    }
    if (console.quitting() && options.panel.empty()) {
      return kDone;
    }
    converse(console, inputs, options);
  } catch (const node::StartError &error) {
    return complain(error, kFailed);
  } catch (const node::InputError &error) {
    return complain(error, kFailed);
  } catch (const node::ReplayDiffers &error) {
    return complain(error, kFailed);
  } catch (const node::CommandError &error) {
    return complain(error, kFailed);
  }
  return kDone;
}

}  // namespace

int main(int count, char **arguments) {
  std::optional<node::Options> options;
  try {
    if (count > 1 && std::string_view(arguments[1]) == "soak") {
      return soak::soak_main(count - 1, arguments + 1, std::cout, std::cerr);
    }
    options = node::read_options(count, arguments);
  } catch (const std::exception &error) {
    return complain(error, kBadInput);
  }
  // Nothing else is caught around it: an exception that leaves a product must end where it was
  // thrown, so that the report of the crash finds the callback.
  return options ? run(*options) : kDone;
}
