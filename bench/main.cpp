// pm_bench: checks that library and floor do the same, measures both, prints the table.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <sstream>
#include <stdexcept>

#ifdef PM_BENCH_GOOGLE
#include <benchmark/benchmark.h>
#endif

#include "bench/check.hpp"
#include "bench/report.hpp"
#include "bench/rows.hpp"
#include "bench/startup.hpp"

namespace {

using namespace bench;

struct Options {
  std::vector<u32> sizes = {64, 4096, 65535};
  std::string rows;  // part of the name
  std::string json;
  bool rivals = true;
  bool only_check = false;
  Effort effort;
};

constexpr const char *usage =
    "usage: pm_bench [--sizes N,N..] [--rows PART-OF-NAME] [--repetitions N] [--seconds S]\n"
    "                [--json FILE] [--no-rivals] [--check]\n"
    "--check runs every row once, for its answers and host calls, not for its time.\n";

constexpr u32 least_ptps = 16;  // the walks need neighbours
constexpr u32 most_ptps = 65'535;

template <class Number>
Number number_of(const std::string &text, Number least, Number most) {
  Number number{};
  const char *end = text.data() + text.size();
  const auto read = std::from_chars(text.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || !(number >= least && number <= most)) {
    std::ostringstream what;
    what << "'" << text << "' is not a number from " << least << " to " << most;
    throw std::invalid_argument(what.str());
  }
  return number;
}

std::vector<u32> numbers_of(const std::string &text) {
  std::vector<u32> numbers;
  std::istringstream parts(text + ",");
  for (std::string part; std::getline(parts, part, ',');) {
    numbers.push_back(number_of(part, least_ptps, most_ptps));
  }
  return numbers;
}

Options options_of(const std::vector<std::string> &arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string &name = arguments[i];
    const auto value = [&]() -> const std::string & {
      if (++i == arguments.size()) {
        throw std::invalid_argument(name + " needs a value");
      }
      return arguments[i];
    };
    if (name == "--sizes") {
      options.sizes = numbers_of(value());
    } else if (name == "--rows") {
      options.rows = value();
    } else if (name == "--json") {
      options.json = value();
    } else if (name == "--repetitions") {
      options.effort.repetitions = number_of(value(), 1, 10'000);
    } else if (name == "--seconds") {
      options.effort.seconds = number_of(value(), 1e-9, 3600.0);
    } else if (name == "--no-rivals") {
      options.rivals = false;
    } else if (name == "--start") {
      start(number_of(value(), 0U, most_ptps));
    } else if (name == "--check") {
      options.only_check = true;
      options.effort = {1, 1e-9};
    } else {
      throw std::invalid_argument(name + " is not known");
    }
  }
  return options;
}

Result run_row(World &world, const Row &row, const Options &options) {
  Result result;
  result.row = row.name;
  result.part = row.part;
  result.ptps = world.ptps();
  result.target = row.target;
  result.parts = row.parts;
  result.host_calls = check(world, row).host_calls;
  result.times = measure(row, options.effort);
  for (const Contender &contender : row.contenders) {
    result.contenders.push_back(contender.name);
  }
  for (auto &times : result.times) {
    for (double &time : times) {
      time /= static_cast<double>(row.parts);
    }
  }
  if (row.tear_down) {
    row.tear_down();
  }
  return result;
}

void run_size(u32 ptps, const Options &options, std::vector<Result> &results) {
  World world(ptps, World::Fill::all);
  Rivals rivals(world, options.rivals);
  std::vector<Row> rows;
  add_identity_rows(world, rivals, rows);
  add_attribute_rows(world, rivals, rows);
  add_delivery_rows(world, rivals, rows);
  add_reverse_rows(world, rivals, rows);
  add_walk_rows(world, rivals, rows);
  add_restore_rows(world, rivals, rows);
  for (const Row &row : rows) {
    if (row.name.find(options.rows) != std::string::npos) {
      results.push_back(run_row(world, row, options));
      if (!options.only_check) {
        print_result(results.back());
      }
    }
  }
  if (!world.node.misuses.empty()) {
    throw CheckError("the host was misused: " + world.node.misuses.front().text);
  }
}

// The whole process against its restore rows and the start of an empty one.
void show_start(const Options &options, const std::vector<Result> &results) {
  const u32 ptps = *std::max_element(options.sizes.begin(), options.sizes.end());
  double restore = 0;
  for (const Result &result : results) {
    if (result.ptps == ptps &&
        (result.row == dynamic_batch_row || result.row == static_batch_row)) {
      restore += summary_of(result.times[0]).median * ptps;
    }
  }
  const int repetitions = options.effort.repetitions;
  const StartTimes empty = measure_start(0, repetitions);
  const StartTimes times = measure_start(ptps, repetitions);
  const MemoryUse use = memory_use(ptps);
  print_start(ptps, restore, empty, times);
  print_memory(ptps, use);
}

int run(const Options &options) {
  for (const std::string &line : Rivals::absent()) {
    std::printf("note: %s\n", line.c_str());
  }
  if (!options.only_check) {
    print_heading();
  }
  std::vector<Result> results;
  for (const u32 ptps : options.sizes) {
    run_size(ptps, options, results);
  }
  if (results.empty()) {
    throw std::invalid_argument("no row has '" + options.rows + "' in its name");
  }
  if (options.only_check) {
    std::printf("%zu rows: library and floor give the same answers with the same host calls\n",
                results.size());
  } else {
    print_growth(results);
    if (options.rows.empty()) {
      show_start(options, results);
    }
    print_targets(results);
  }
  if (!options.json.empty()) {
    write_json(options.json, results);
  }
  return 0;
}

}  // namespace

int main(int argc, char **argv) {
  try {
#ifdef PM_BENCH_GOOGLE
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char *flags[] = {argv[0], interleaving, nullptr};
    int flag_num = 2;
    benchmark::Initialize(&flag_num, flags);
#endif
    return run(options_of({argv + 1, argv + argc}));
  } catch (const std::invalid_argument &error) {
    (void)std::fprintf(stderr, "error: %s\n%s", error.what(), usage);
    return 2;
  } catch (const std::exception &error) {
    (void)std::fprintf(stderr, "error: %s\n", error.what());
    return 1;
  }
}
