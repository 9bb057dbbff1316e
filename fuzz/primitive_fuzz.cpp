// Primitive messages, bare and wrapped by the device layer, of no more bytes than their senders
// have to give.
#include "fuzz/rig.hpp"

namespace {

using namespace fuzz;

constexpr std::size_t bare_size = 8;

// The code, and the calls of the function that is booked for each of types 3 to 12.
void judge(u16 type, u16 ptp, u32 code, std::size_t calls) {
  const bool check_type =
      type == 0 || type == 2 || type == 8 || type == 9 || type == 11 || type == 12;
  if (check_type) {
    HOLDS(code == PM_ERR_PRIM_CHECK_TYPE && calls == 0);
  } else if (type < 3 || type > 7) {
    HOLDS(code == PM_OK && calls == 0);
  } else if (ptp != PM_PTP_ID_NONE && PM_LibIfPtpExist(ptp) != PM_OK) {
    HOLDS(is_known_code(code) && code != PM_OK && calls == 0);
  } else {
    // The function fails for odd types, and type 3 alone of these ends with a failure.
    HOLDS(code == (type == 3 ? PM_ERR_PARA : PM_OK) && calls == 1);
  }
}

void send_bare(Input &input) {
  const u8 length = input.number<u8>();
  const std::vector<u8> message =
      input.whole_block(bare_size + length % (sizeof(PmPrimMsg) - bare_size + 1));
  const auto content = record_in<PmPrimMsg>(message);
  const std::size_t before = Rig::booked_calls();
  const u32 code = PM_PrimMsgProc(reinterpret_cast<const PmPrimMsg *>(message.data()));
  judge(content.usPrimaryWord, content.usPtpID, code, Rig::booked_calls() - before);
}

// A value of another length need not be there.
void send_wrapped(Input &input) {
  std::vector<u8> tlv = input.whole_block(sizeof(PmDevDdmTlv));
  const auto content = record_in<PmDevDdmTlv>(tlv);
  const bool whole = content.ulLength == sizeof(PmPrimMsg);
  if (!whole) {
    tlv.resize(offsetof(PmDevDdmTlv, stValue));
    tlv.shrink_to_fit();
  }
  const std::size_t before = Rig::booked_calls();
  const u32 code = PM_LibPrimNotifyRtRestore(reinterpret_cast<const PmDevDdmTlv *>(tlv.data()));
  const std::size_t calls = Rig::booked_calls() - before;
  if (whole) {
    judge(content.stValue.usPrimaryWord, content.stValue.usPtpID, code, calls);
  } else {
    HOLDS(code == 1 && calls == 0);
  }
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
    if (input.number<u8>() % 2 == 0) {
      send_bare(input);
    } else {
      send_wrapped(input);
    }
  }
  return 0;
}
