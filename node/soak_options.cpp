// pmnode soak.
#include <CLI/CLI.hpp>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "node/document.hpp"
#include "node/soak.hpp"
#include "node/soak_trial.hpp"

namespace soak {

namespace {

struct Options {
  std::uint64_t seed = 1;
  u32 steps = 10'000;
  std::string replay;
  std::string script = "soak-failure.txt";
  bool json = false;
  bool print = false;
  bool shrinks = true;
  bool digest = false;
  std::string transcript;  // empty: none
};

constexpr unsigned kLimitSeconds = 300;

Script script_of(const Options &options) {
  if (options.replay.empty()) {
    return life_of(options.seed, options.steps, options.digest);
  }
  std::ifstream file = node::open_input(options.replay, "the steps of a soak");
  try {
    return read_script(file);
  } catch (const std::invalid_argument &error) {
    throw node::InputError(options.replay + ": " + error.what());
  }
}

void write_script(const Options &options, const Script &script) {
  std::ofstream file(options.script);
  file << "# pmnode soak --replay " << options.script << "\n";
  if (options.replay.empty()) {
    file << "# from seed " << options.seed << ", " << options.steps << " steps\n";
  }
  for (const Step &step : script) {
    file << text_of(step) << "\n";
  }
  file.close();
  if (!file) {
    throw node::InputError(options.script + ": cannot be written; expected a file for the steps");
  }
}

void show_text(std::ostream &out, const Outcome &outcome, const Script &script) {
  const double rate =
      outcome.seconds > 0 ? static_cast<double>(outcome.steps) / outcome.seconds : 0;
  if (!outcome.mismatch) {
    out << "passed: " << outcome.steps << " calls compared in " << outcome.seconds << " s, "
        << static_cast<std::uint64_t>(rate) << " a second\n";
    return;
  }
  const Mismatch &found = *outcome.mismatch;
  out << "failed at call " << found.step << ": " << text_of(script[found.step]) << "\nexpected:\n"
      << found.expected << "got:\n"
      << found.got;
}

nlohmann::json json_of(const Options &options, const Outcome &outcome, const Script &script) {
  nlohmann::json answer{
      {"passed", !outcome.mismatch}, {"calls", outcome.steps}, {"seconds", outcome.seconds}};
  if (options.replay.empty()) {
    answer["seed"] = options.seed;
    answer["steps"] = options.steps;
  } else {
    answer["replay"] = options.replay;
  }
  if (outcome.mismatch) {
    answer["failed_at"] = outcome.mismatch->step;
    answer["step"] = text_of(script[outcome.mismatch->step]);
    answer["expected"] = outcome.mismatch->expected;
    answer["got"] = outcome.mismatch->got;
  }
  return answer;
}

std::string dumped(const nlohmann::json &answer) {
  return answer.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace);
}

int soak(const Options &options, std::ostream &out) {
  if (!options.json && options.replay.empty()) {
    out << "seed " << options.seed << ", " << options.steps << " steps\n" << std::flush;
  }
  Script script = script_of(options);
  if (options.print) {
    for (const Step &step : script) {
      out << text_of(step) << "\n";
    }
    return 0;
  }
  if (!options.transcript.empty() && !std::ofstream(options.transcript)) {
    throw node::InputError(options.transcript + ": cannot be opened; expected a file to write to");
  }
  const Outcome outcome = options.digest ? try_portable(script, kLimitSeconds, options.transcript)
                                         : try_script(script, kLimitSeconds);
  if (options.digest && !outcome.mismatch) {
    std::ostringstream digest;
    digest << std::hex << outcome.digest;
    if (options.json) {
      nlohmann::json answer = json_of(options, outcome, script);
      answer["digest"] = digest.str();
      out << dumped(answer) << "\n";
    } else {
      out << "digest " << digest.str() << "\n";
    }
    return 0;
  }
  nlohmann::json answer = json_of(options, outcome, script);
  if (!options.json) {
    show_text(out, outcome, script);
  }
  if (outcome.mismatch && options.replay.empty() && options.shrinks) {
    out << std::flush;
    const Script shortest = shrink(script, outcome.mismatch->step);
    write_script(options, shortest);
    answer["script"] = options.script;
    answer["script_steps"] = shortest.size();
    if (!options.json) {
      out << "shrunk to " << shortest.size() << " steps in " << options.script << "\n";
      show_text(out, try_script(shortest, kLimitSeconds), shortest);
    }
  }
  if (options.json) {
    out << dumped(answer) << "\n";
  }
  return outcome.mismatch ? 1 : 0;
}

}  // namespace

int soak_main(int count, char **arguments, std::ostream &out, std::ostream &complaints) {
  Options options;
  CLI::App app{"Lives a random but replayable life of a node and checks the library's answers.",
               "pmnode soak"};
  app.add_option("--seed", options.seed, "Seed of the life")->capture_default_str();
  app.add_option("--steps", options.steps, "Actions of the life; questions follow each")
      ->capture_default_str();
  app.add_option("--replay", options.replay, "Plays the steps of a file instead")
      ->type_name("FILE");
  app.add_option("--script", options.script, "Where the shrunk steps of a failure are written")
      ->type_name("FILE")
      ->capture_default_str();
  app.add_flag("--print", options.print, "Prints the steps and plays nothing");
  app.add_flag_callback(
      "--no-shrink", [&options] { options.shrinks = false; },
      "Leaves a failing life as long as it is");
  app.add_flag("--digest", options.digest,
               "Prints one number for all that was answered, called and printed");
  app.add_option("--transcript", options.transcript,
                 "With --digest: where all that went into the number is written")
      ->type_name("FILE")
      ->needs("--digest");
  app.add_flag("--json", options.json, "Reports as one JSON object");
  app.footer("Exit codes: 0 passed, 1 the library and the model differ, 2 bad input.");
  try {
    app.parse(count, arguments);
    return soak(options, out);
  } catch (const CLI::CallForHelp &) {
    out << app.help();
    return 0;
  } catch (const CLI::ParseError &error) {
    complaints << "pmnode soak: " << error.what() << "; expected what --help tells\n";
    return 2;
  } catch (const std::exception &error) {
    complaints << "pmnode soak: " << error.what() << "\n";
    return 2;
  }
}

}  // namespace soak
