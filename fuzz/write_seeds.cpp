// Writes the seeds of the fuzzers whose inputs are bytes: small lives that are all in order.
// usage: fuzz_write_seeds FOLDER      (fuzz/seeds)
#include <array>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "fuzz/input.hpp"
#include "pm.h"

namespace {

// An input that is being put together.
struct Seed {
  std::string bytes;

  template <class Value>
  Seed &add(const Value &value) {
    bytes.append(reinterpret_cast<const char *>(&value), sizeof value);
    return *this;
  }
  void write(const std::filesystem::path &folder, const char *name) const {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / name, std::ios::binary) << bytes;
  }
};

constexpr u8 with_tables = 0;
constexpr u8 without_tables = 1;

PtpDynPubData port(u16 number) {
  return {0, number, PM_PTP_CLASS_PORT, 1, 7, 0, 0, 0, 3};
}

PtpStaticData static_record(u16 id) {
  PtpStaticData record{};
  record.usPtpID = id;
  std::strcpy(record.szDescription, "uplink");
  return record;
}

void write_spec(const std::filesystem::path &folder) {
  const PmSpec general = {1, 2, 3, 80, 5, 6};
  const PmAttrCB numbers = {100, 0, 20, 200, 0, 10, 0, 0};
  const PmSubAttrNum types = {5, 50};
  for (const u8 tables : {with_tables, without_tables}) {
    Seed seed;
    seed.add(tables).add(u32{PM_SPEC_MSG_SPEC}).add(u32{sizeof general}).add(general);
    seed.add(u32{PM_SPEC_MSG_ATTR_CB}).add(u32{sizeof numbers}).add(numbers);
    seed.add(u32{PM_SPEC_MSG_SUB_ATTR}).add(u32{sizeof types}).add(types);
    // An odd length also has the port types counted anew.
    seed.add(u32{PM_SPEC_MSG_SPEC}).add(u32{1}).add(u8{0});
    seed.write(folder / "spec", tables == with_tables ? "grown" : "first");
  }
}

template <class Record>
void add_delivery(Seed &seed, u8 handler, u8 flags, u32 key, const Record &record) {
  seed.add(handler).add(flags).add(u8{sizeof record}).add(u8{0}).add(key).add(record);
}

void write_restore(const std::filesystem::path &folder) {
  constexpr u8 batch_over = 4;
  for (const u8 tables : {with_tables, without_tables}) {
    Seed seed;
    seed.add(tables);
    add_delivery(seed, 0, 0, 0, PmSubAttrNum{3, 40});
    for (u16 suffix = 0; suffix < 3; ++suffix) {
      const u16 type = static_cast<u16>(7 + suffix);
      add_delivery(seed, 1, 0, suffix, PmSubInnerSubInfo{0, type, 1, 0, 0, 0});
    }
    add_delivery(seed, 2, 0, 20, port(1));
    PtpDynPubData moved = port(2);
    moved.ulVsMask = 6;
    add_delivery(seed, 2, batch_over, 20, moved);
    add_delivery(seed, 3, batch_over, 0, static_record(20));
    add_delivery(seed, 4, batch_over, 0, PmPrimNotify{6, 20, {}});
    add_delivery(seed, 5, batch_over, 0, u32{4});
    add_delivery(seed, 6, 0, 0, PmSpec{1, 2, 3, 32, 5, 6});
    add_delivery(seed, 7, 0, 0, PmAttrCB{100, 0, 20, 200, 0, 10, 0, 0});
    PtpStaticData absent{};
    std::memset(&absent, 0xFF, sizeof absent);
    add_delivery(seed, 3, batch_over, 0, absent);
    seed.write(folder / "restore", tables == with_tables ? "later" : "first");
  }
}

void write_primitive(const std::filesystem::path &folder) {
  Seed seed;
  seed.add(with_tables);
  for (const u16 type : {u16{3}, u16{5}, u16{6}, u16{0}}) {
    PmPrimMsg message{};
    message.usPrimaryWord = type;
    message.usPtpID = 1;
    PmDevDdmTlv tlv{};
    tlv.ulLength = sizeof message;
    tlv.stValue = message;
    seed.add(u8{0}).add(u8{sizeof message - 8}).add(message).add(u8{1}).add(tlv);
  }
  seed.write(folder / "primitive", "messages");
}

void write_sync(const std::filesystem::path &folder) {
  Seed seed;
  seed.add(with_tables);
  PmSynRecord unit{};
  unit.ucModule = PM_SYN_MODULE;
  unit.usLen = sizeof unit.stData;
  unit.stData = static_record(9);
  seed.add(u8{1}).add(u8{0}).add(u8{9}).add(u8{sizeof unit}).add(unit);
  seed.add(u8{0}).add(u32{9}).add(u8{sizeof unit});
  std::memset(&unit.stData, 0xFF, sizeof unit.stData);
  seed.add(u8{1}).add(u8{0}).add(u8{9}).add(u8{sizeof unit}).add(unit);
  seed.write(folder / "sync", "units");
}

void write_window(const std::filesystem::path &folder) {
  for (u32 command = 0; command < 10; ++command) {
    Seed seed;
    seed.add(u8{0}).add(u32{32}).add(port(1)).add(static_record(1));
    seed.add(PmSubInnerSubInfo{0, 7, 1, 0, 0, 0});
    for (const u32 sub_command : {0U, 1U, 7U}) {
      for (const u32 word : {4U, 0x4CU, 54U, 0U, 16U, command, sub_command, 0U, 1U}) {
        seed.add(word);
      }
    }
    seed.write(folder / "window", ("command_" + std::to_string(command)).c_str());
  }
}

void write_remote(const std::filesystem::path &folder) {
  for (const u32 transport : {0U, 5U}) {
    Seed seed;
    seed.add(with_tables);
    const auto answer = [&](u32 result) {
      seed.add(transport).add(result).add(u16{30}).add(u16{0});
    };
    seed.add(u8{0});
    answer(0);
    seed.add(PmVirtualPtpDesc{0, 0, 2, 3, 7});
    seed.add(u8{1});
    answer(0);
    seed.add(u16{30});
    answer(7);
    answer(0);
    seed.add(u8{6}).add(std::array<char, 6>{'u', 'p', 'l', 'i', 'n', 'k'});
    seed.add(u8{2});
    answer(0);
    seed.add(PmFspOntid{0, 1, 2, 3}).add(u16{2}).add(u16{0x4142}).add(u32{1}).add(u8{1});
    answer(9);
    seed.add(u8{3});
    answer(0);
    seed.add(u16{6}).add(u16{1}).add(PmFspOntid{0, 1, 2, 3}).add(u8{0}).add(u32{0});
    seed.write(folder / "remote", transport == 0 ? "answered" : "unreachable");
  }
}

// Any bytes are a life.
void write_model(const std::filesystem::path &folder) {
  constexpr std::size_t length = 300;
  constexpr u32 all_hooks = 0xFFFF;
  std::mt19937 random;
  for (u16 life = 0; life < 4; ++life) {
    Seed seed;
    seed.add(static_cast<u16>(life % 2 == 0 ? all_hooks : random())).add(life);
    while (seed.bytes.size() < length) {
      seed.add(static_cast<u8>(random()));
    }
    seed.write(folder / "model", ("life_" + std::to_string(life)).c_str());
  }
}

}  // namespace

int main(int count, char **arguments) {
  if (count != 2) {
    std::fprintf(stderr, "usage: fuzz_write_seeds FOLDER\n");
    return 2;
  }
  const std::filesystem::path folder = arguments[1];
  write_spec(folder);
  write_restore(folder);
  write_primitive(folder);
  write_sync(folder);
  write_window(folder);
  write_remote(folder);
  write_model(folder);
  return 0;
}
