// Specification messages, before and after the tables have been sized by other ones.
#include "fuzz/rig.hpp"

namespace {

using namespace fuzz;

struct Spec {
  PmSpec general;
  u16 max_ptp_id;
  u32 total;
};

Spec current() {
  Spec spec{};
  auto *words = reinterpret_cast<u8 *>(&spec.general);
  for (u32 index = 0; index < 6; ++index) {
    const u32 value = PM_LibGetPmSpec(index);
    HOLDS(value == PM_GetPmSpec(index));
    std::memcpy(words + index * sizeof value, &value, sizeof value);
  }
  spec.max_ptp_id = PM_LibGetMaxPtpID();
  spec.total = PM_LibGetPtpMaxNum();
  return spec;
}

// What the message makes of the specification.
Spec expected(Spec spec, const PmSpecMsg &head, const std::vector<u8> &payload) {
  if (head.ulIdentifier == PM_SPEC_MSG_SPEC && head.ulLen == sizeof(PmSpec)) {
    spec.general = record_in<PmSpec>(payload);
  }
  if (head.ulIdentifier == PM_SPEC_MSG_ATTR_CB && head.ulLen == sizeof(PmAttrCB)) {
    const auto numbers = record_in<PmAttrCB>(payload);
    const u16 highest = numbers.usMaxPtpID;
    spec.max_ptp_id = highest == 0 || highest == 0xFFFF ? u16{1} : highest;
    spec.total =
        static_cast<u16>(numbers.usVisiblePtpNum + numbers.usOtherPtpNum + numbers.usVirtualPtpNum);
  }
  return spec;
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
    const auto head = input.record<PmSpecMsg>();
    const std::vector<u8> payload = input.whole_block(std::min<u32>(head.ulLen, 64));
    std::vector<u8> message(sizeof head + payload.size());
    std::memcpy(message.data(), &head, sizeof head);
    std::copy(payload.begin(), payload.end(), message.begin() + sizeof head);
    const Spec wanted = expected(current(), head, payload);
    HOLDS(PM_LibSpecUpdate(message.data()) == PM_OK);
    const Spec got = current();
    HOLDS(same(got.general, wanted.general) && got.max_ptp_id == wanted.max_ptp_id &&
          got.total == wanted.total);
    if (head.ulLen % 2 == 1) {
      HOLDS(PM_LibPtpTypeNumInit() == PM_OK);
    }
  }
  return 0;
}
