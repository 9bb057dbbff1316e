// Synchronisation records: what is restored is what is extracted again, and what is refused changes
// nothing.
#include "fuzz/rig.hpp"

namespace {

using namespace fuzz;

struct Unit {
  u32 code = 0;
  u32 length = 0;
  std::vector<u8> bytes;
};

Unit extract(u32 unit, std::size_t size) {
  Unit result;
  result.bytes.resize(size);
  result.code =
      PM_LibSynExtractStaticData(unit, result.bytes.data(), static_cast<u32>(size), &result.length);
  HOLDS((result.code == PM_OK) == (size >= sizeof(PmSynRecord) && unit <= max_ptp));
  HOLDS(result.code != PM_OK || result.length == sizeof(PmSynRecord));
  return result;
}

u32 expected(u32 unit, const std::vector<u8> &record) {
  const auto content = record_in<PmSynRecord>(record);
  if (unit > max_ptp) {
    return PM_ERR_PTPID_RANGE;
  }
  if (record.size() < offsetof(PmSynRecord, stData)) {
    return PM_ERR_LEN;
  }
  if (content.usVersion != 0) {
    return PM_ERR_DATA_INVALID;
  }
  if (record.size() < sizeof(PmSynRecord)) {
    return PM_ERR_LEN;
  }
  return content.usLen == sizeof(PtpStaticData) ? PM_OK : PM_ERR_DATA_INVALID;
}

void restore(Input &input) {
  const u32 unit = input.number<u8>() % 2 == 0 ? input.number<u8>() : input.number<u32>();
  const std::vector<u8> record = input.whole_block(input.number<u8>());
  const auto content = record_in<PmSynRecord>(record);
  const bool absent =
      std::all_of(reinterpret_cast<const u8 *>(&content.stData),
                  reinterpret_cast<const u8 *>(&content + 1), [](u8 byte) { return byte == 0xFF; });
  const u16 id = absent ? static_cast<u16>(unit) : content.stData.usPtpID;
  const std::vector<u8> before = id <= max_ptp ? extract(id, sizeof content).bytes : record;
  const u32 code = PM_LibSynRestoreStaticData(
      unit, record.empty() ? &unit : static_cast<const void *>(record.data()),
      static_cast<u32>(record.size()), 0);
  HOLDS(code == expected(unit, record));
  if (id > max_ptp) {
    return;
  }
  const Unit after = extract(id, sizeof content);
  HOLDS(code == PM_OK ? same(record_in<PmSynRecord>(after.bytes).stData, content.stData)
                      : after.bytes == before);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8 *bytes, std::size_t size) {
  Input input(bytes, size);
  Rig rig;
  if (input.number<u8>() % 2 == 0) {
    rig.lay_tables();
  }
  const auto scope = host::enter(*rig.instance);
  while (!input.empty()) {
    if (input.number<u8>() % 4 == 0) {
      const u32 unit = input.number<u32>();
      extract(unit, input.number<u8>());
    } else {
      restore(input);
    }
  }
  return 0;
}
