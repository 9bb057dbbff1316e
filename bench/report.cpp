#include "bench/report.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <map>
#include <stdexcept>

namespace bench {

namespace {

// Three significant figures, in the unit that suits.
std::string time_text(double nanoseconds) {
  static constexpr const char *units[] = {"ns", "us", "ms", "s"};
  std::size_t unit = 0;
  while (nanoseconds >= 9995 && unit + 1 < std::size(units)) {
    nanoseconds /= 1000;
    ++unit;
  }
  char text[32];
  const int digits = nanoseconds < 9.995 ? 2 : nanoseconds < 99.95 ? 1 : 0;
  (void)std::snprintf(text, sizeof text, "%.*f %s", digits, nanoseconds, units[unit]);
  return text;
}

double quantile(const std::vector<double> &sorted, double share) {
  const double place = share * static_cast<double>(sorted.size() - 1);
  const auto low = static_cast<std::size_t>(std::floor(place));
  const auto high = std::min(low + 1, sorted.size() - 1);
  const double rest = place - static_cast<double>(low);
  return sorted[low] * (1 - rest) + sorted[high] * rest;
}

std::string compiler() {
  return std::string("g++ ") + __VERSION__ + ", " + std::to_string(8 * sizeof(void *)) + " bits";
}

std::string processor() {
  std::ifstream file("/proc/cpuinfo");
  for (std::string line; std::getline(file, line);) {
    if (line.rfind("model name", 0) == 0) {
      return line.substr(line.find(':') + 2);
    }
  }
  return "unknown";
}

std::string today() {
  const std::time_t now = std::time(nullptr);
  char text[32];
  (void)std::strftime(text, sizeof text, "%Y-%m-%d", std::gmtime(&now));
  return text;
}

std::string quoted(const std::string &text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
    }
    out += c;
  }
  return out + "\"";
}

}  // namespace

Summary summary_of(std::vector<double> times) {
  if (times.empty()) {
    return {};
  }
  std::sort(times.begin(), times.end());
  const double median = quantile(times, 0.5);
  return {median, (quantile(times, 0.75) - quantile(times, 0.25)) / median};
}

Summary Result::ratio() const {
  if (times.size() < 2) {
    return {};
  }
  const Summary library = summary_of(times[0]);
  const Summary hand = summary_of(times[1]);
  return {library.median / hand.median, std::max(library.spread, hand.spread)};
}

void print_heading() {
  std::printf("processor %s, %s, %s, measured with %s\n", processor().c_str(), compiler().c_str(),
              today().c_str(), measured_with());
  std::printf(
      "Times are medians per question, or per record or function where the row says so; the spread"
      " is the\ndistance between the quartiles. \"calls\" are the host calls of one question, the"
      " same in library and floor.\n\n");
  std::printf("%7s  %-28s %6s %10s %10s %6s %7s %7s  %s\n", "PTPs", "question", "calls", "library",
              "floor", "ratio", "target", "spread", "rivals");
}

void print_result(const Result &result) {
  const Summary ratio = result.ratio();
  std::string rivals;
  for (std::size_t i = 2; i < result.contenders.size(); ++i) {
    rivals += (rivals.empty() ? "" : ", ") + result.contenders[i] + " " +
              time_text(summary_of(result.times[i]).median);
  }
  char target[16] = "-";
  if (result.target != 0) {
    (void)std::snprintf(target, sizeof target, "%.1f%s", result.target,
                        ratio.median <= result.target ? " ok" : " NO");
  }
  std::printf("%7u  %-28s %6.1f %10s %10s %6.2f %7s %6.0f%%  %s\n", result.ptps, result.row.c_str(),
              result.host_calls, time_text(summary_of(result.times[0]).median).c_str(),
              time_text(summary_of(result.times[1]).median).c_str(), ratio.median, target,
              100 * ratio.spread, rivals.c_str());
  (void)std::fflush(stdout);
}

void print_growth(const std::vector<Result> &results) {
  std::map<std::string, std::vector<const Result *>> by_row;
  std::vector<std::string> order;
  for (const Result &result : results) {
    if (by_row[result.row].empty()) {
      order.push_back(result.row);
    }
    by_row[result.row].push_back(&result);
  }
  if (results.empty() || results.front().ptps == results.back().ptps) {
    return;
  }
  std::printf("\nHow the library's time grows, against the smallest number of PTPs\n");
  for (const std::string &name : order) {
    const auto &sizes = by_row[name];
    std::printf("  %-28s", name.c_str());
    const double base = summary_of(sizes.front()->times[0]).median;
    for (const Result *at : sizes) {
      std::printf("  %u: x%.2f", at->ptps, summary_of(at->times[0]).median / base);
    }
    std::printf("\n");
  }
}

void print_targets(const std::vector<Result> &results) {
  u32 reached = 0;
  u32 all = 0;
  for (const Result &result : results) {
    if (result.target == 0) {
      continue;
    }
    ++all;
    reached += result.ratio().median <= result.target ? 1U : 0U;
  }
  std::printf("\n%u of %u ratios reach their target\n", reached, all);
}

void print_start(u32 ptps, double restore, const StartTimes &empty, const StartTimes &times) {
  const auto median = [](const std::vector<double> &all) { return summary_of(all).median; };
  const double process = median(times.process);
  const double base = restore + median(empty.process);
  constexpr double target = 1.5;
  std::printf("\nA process of its own, %u PTPs: %s up and filled (spread %.0f%%)\n", ptps,
              time_text(process).c_str(), 100 * summary_of(times.process).spread);
  std::printf("  of it: owner's records laid %s, registration to the last phase %s, batches %s\n",
              time_text(median(times.laid)).c_str(), time_text(median(times.up)).c_str(),
              time_text(median(times.filled)).c_str());
  std::printf("  against: restore rows %s and an empty process %s: ratio %.2f, target %.1f %s\n",
              time_text(restore).c_str(), time_text(median(empty.process)).c_str(), process / base,
              target, process <= target * base ? "ok" : "NO");
}

void print_memory(u32 ptps, const MemoryUse &use) {
  std::printf(
      "Memory per PTP at %u PTPs, in the host's partitions: dynamic record %.1f bytes, "
      "static record %.1f,\nremembered place %.1f\n",
      ptps, use.dynamic, use.fixed, use.places);
}

void write_json(const std::string &file, const std::vector<Result> &results) {
  std::ofstream out(file);
  out << "{\"processor\": " << quoted(processor()) << ", \"compiler\": " << quoted(compiler())
      << ", \"date\": " << quoted(today()) << ", \"measured_with\": " << quoted(measured_with())
      << ",\n \"unit\": \"nanoseconds\", \"rows\": [";
  const char *comma = "\n";
  for (const Result &result : results) {
    out << comma << "  {\"row\": " << quoted(result.row) << ", \"ptps\": " << result.ptps
        << ", \"per\": " << quoted(result.part.empty() ? "question" : result.part)
        << ", \"host_calls\": " << result.host_calls << ", \"target\": " << result.target
        << ", \"ratio\": " << result.ratio().median << ", \"contenders\": {";
    for (std::size_t i = 0; i < result.contenders.size(); ++i) {
      const Summary summary = summary_of(result.times[i]);
      out << (i == 0 ? "" : ", ") << quoted(result.contenders[i])
          << ": {\"median\": " << summary.median << ", \"spread\": " << summary.spread
          << ", \"times\": [";
      for (std::size_t k = 0; k < result.times[i].size(); ++k) {
        out << (k == 0 ? "" : ", ") << result.times[i][k];
      }
      out << "]}";
    }
    out << "}}";
    comma = ",\n";
  }
  out << "\n]}\n";
  out.flush();
  if (!out) {
    throw std::runtime_error(file + ": cannot be written");
  }
}

}  // namespace bench
