// A file into which every host call of a node goes while the journal is on.
#ifndef NODE_JOURNAL_FILE_HPP
#define NODE_JOURNAL_FILE_HPP

#include <fstream>
#include <string>
#include <vector>

#include "node/node.hpp"

namespace node {

// What each board's journal keeps in memory.
constexpr std::size_t kJournalEntriesKept = 65'536;

// The call as the journal has it, two blanks further for each call that it was made inside of.
std::string indented_text(const host::JournalEntry &entry);

// Turns the journals of a node that has not started on, and writes a line per call: board, number,
// tick, instance, call. Calls stand in the order in which they began. Must outlive the node's last
// call.
class JournalFile {
 public:
  // An InputError when the file cannot be written.
  explicit JournalFile(const std::string &file);
  JournalFile(const JournalFile &) = delete;
  JournalFile &operator=(const JournalFile &) = delete;

  void watch(Node &node);

 private:
  void write(u32 board, std::vector<host::JournalEntry> &pending);

  std::ofstream stream_;
};

}  // namespace node

#endif
