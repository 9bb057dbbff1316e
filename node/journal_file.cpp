#include "node/journal_file.hpp"

#include <algorithm>
#include <memory>

#include "node/document.hpp"
#include "node/numerals.hpp"

namespace node {

std::string indented_text(const host::JournalEntry &entry) {
  return std::string(std::size_t{2} * entry.depth, ' ') + entry.text();
}

JournalFile::JournalFile(const std::string &file) : stream_(file) {
  if (!stream_) {
    throw InputError(file + ": cannot be opened; expected a file to write the journal to");
  }
  stream_ << "# board number tick instance call\n";
}

void JournalFile::watch(Node &node) {
  for (const auto &side : node.sides()) {
    // A call ends after the calls made inside it; all of them wait for the outermost one.
    const auto pending = std::make_shared<std::vector<host::JournalEntry>>();
    side->host.journal.set_observer(
        [this, pending, board = side->cid](const host::JournalEntry &entry) {
          pending->push_back(entry);
          if (entry.depth == 0) {
            write(board, *pending);
          }
        });
    side->host.journal.set_capacity(kJournalEntriesKept);
    side->host.journal.start();
  }
}

void JournalFile::write(u32 board, std::vector<host::JournalEntry> &pending) {
  std::sort(pending.begin(), pending.end(),
            [](const auto &a, const auto &b) { return a.number < b.number; });
  for (const host::JournalEntry &entry : pending) {
    stream_ << hex(board) << " " << entry.number << " " << entry.tick << " " << hex(entry.cid)
            << " " << indented_text(entry) << "\n";
  }
  // A product that crashes must not take the last calls with it.
  stream_ << std::flush;
  pending.clear();
}

}  // namespace node
