// Steps of a node's life: start-up, sides, synchronisation, faults, time, boards.
#include "node/soak_actions.hpp"

namespace soak {

namespace {

using namespace draw;

constexpr u32 kFirstCid = 0x36;

void enrol(Stage &stage, const u32 * /*a*/) {
  const host::Scope scope(stage.node());
  stage.say("answer", {stage.player.register_info()});
  for (const RootCompRegisterInfo &info : stage.node().root.components()) {
    stage.say("component", {info.ulCompType, info.ulReserved1, info.ulReserved2});
    stage.say_bytes("  name", info.acName, sizeof info.acName);
  }
}

void construct(Stage &stage, const u32 *a) {
  if (stage.instance() != nullptr) {
    return;
  }
  host::Instance *made =
      stage.node().root.construct(kFirstCid + static_cast<u32>(stage.side), a[0]);
  stage.instances[stage.side] = made;
  stage.say("constructed", {made != nullptr ? 1U : 0U, stage.node().root.last_code()});
  if (made != nullptr) {
    made->active = stage.side == 0;
    stage.say_bytes("  words", made->local_data.get(), 2 * sizeof(u32));
  }
}

void destruct(Stage &stage, const u32 * /*a*/) {
  stage.remove_instance();
}

void start_fid(Stage &stage, const u32 *a) {
  if (stage.instance() != nullptr) {
    stage.say("answer",
              {stage.node().root.start_fid(*stage.instance(), stage.player.fid_init, a[0])});
  }
}

void start_phase(Stage &stage, const u32 *a) {
  if (stage.instance() != nullptr) {
    stage.say("answer", {stage.node().root.start_phase(*stage.instance(), a[0])});
  }
}

void deliver(Stage &stage, const u32 * /*a*/) {
  for (host::Node &node : stage.nodes) {
    stage.say("done", {static_cast<u32>(node.run())});
  }
}

void change_side(Stage &stage, const u32 *a) {
  stage.side = a[0] % Stage::kSides;
}

void pair(Stage &stage, const u32 * /*a*/) {
  if (stage.instances[0] != nullptr && stage.instances[1] != nullptr) {
    stage.nodes[0].syn.pair(*stage.instances[0], *stage.instances[1]);
  }
}

void detach(Stage &stage, const u32 * /*a*/) {
  stage.nodes[0].syn.detach();
}

void attach(Stage &stage, const u32 *a) {
  stage.nodes[0].syn.attach(a[0] % 2 == 0 ? host::CatchUp::marked : host::CatchUp::full);
}

void failover(Stage &stage, const u32 * /*a*/) {
  if (stage.nodes[0].syn.failover()) {
    stage.nodes[0].owner.publish_through(stage.nodes[stage.instances[0]->active ? 0 : 1]);
  }
}

void synchronise(Stage &stage, const u32 * /*a*/) {
  host::Synchronisation &syn = stage.nodes[0].syn;
  stage.say("shipped", {static_cast<u32>(syn.run()), static_cast<u32>(syn.extract_failures()),
                        static_cast<u32>(syn.restore_failures())});
}

void differences(Stage &stage, const u32 * /*a*/) {
  if (stage.instances[0] == nullptr || stage.instances[1] == nullptr) {
    return;
  }
  u32 sum = 0;
  for (const host::SyncDifference &each : stage.nodes[0].syn.compare()) {
    sum = sum * 31 + each.unit + 1;
  }
  stage.say("differing units", {sum});
}

void arm(Stage &stage, const u32 *a) {
  const host::Fn fn = faulty_function(a[0]);
  stage.node().faults.fail_nth(fn, a[1], a[2] == 0 ? 1 : a[2]);
  stage.fault_steps = 2;
}

void slow(Stage &stage, const u32 *a) {
  stage.node().clock.advance(a[0]);
}

void board_out(Stage &stage, const u32 *a) {
  for (host::Node &node : stage.nodes) {
    node.chassis.remove(static_cast<u16>(a[0]), static_cast<u8>(a[1]));
  }
}

void board_in(Stage &stage, const u32 *a) {
  constexpr u16 outer[] = {8, 33, 200, 0};
  constexpr u16 inner[] = {1, 3, 55, 0};  // 255 ports are the most a board may have
  const u32 kind = a[2] % std::size(outer);
  host::Board board = host::Board::of("BOARD", outer[kind], inner[kind]);
  for (u8 port = 0; port < 8; ++port) {
    board.port(port).lan_switch = ((a[3] >> port) & 1) != 0;
    board.port(port).e_switch = ((a[3] >> (port + 8)) & 1) != 0;
    board.port(port).type = port % 3 == 0 ? u8{host::port_type_none} : u8{1};
  }
  for (host::Node &node : stage.nodes) {
    node.chassis.insert(static_cast<u16>(a[0]), static_cast<u8>(a[1]), board);
  }
}

void dependence(Stage &stage, const u32 *a) {
  if (stage.instance() != nullptr) {
    stage.instance()->depends.erase(407);
    if (a[0] != 0) {
      stage.instance()->depends.insert(407);
    }
  }
}

void batch_state(Stage &stage, const u32 *a) {
  host::Distribution &ddm = stage.node().ddm;
  ddm.forced_batch_state.reset();
  if (a[0] < 2) {
    ddm.forced_batch_state = static_cast<u8>(a[0]);
  }
}

// The construct entry in the phases that create nothing.
template <class P>
void construct_phase(Stage &stage, const u32 *a) {
  stage.say("answer", {P::PM_LibConstructProc(1 + a[0], 0, 0x36, 0)});
}

// Everything the tables hold, by one number per PTP and table.
template <class P>
void everything(Stage &stage, const u32 * /*a*/) {
  const auto mixed = [](u32 seed, const void *bytes, std::size_t size) {
    u32 sum = seed;
    for (std::size_t i = 0; i < size; ++i) {
      sum = (sum ^ static_cast<const u8 *>(bytes)[i]) * 16'777'619U;
    }
    return sum;
  };
  const u32 ids = std::min<u32>(P::PM_LibGetMaxPtpID() + 2U, 1'200);
  for (u32 id = 0; id < ids; ++id) {
    const auto ptp = static_cast<u16>(id);
    PtpDynPubData dynamic{};
    PtpStaticData fixed{};
    u32 sum = P::PM_LibGetAllDynDataFromPtpID(ptp, &dynamic);
    sum = mixed(sum, &dynamic, sizeof dynamic);
    sum ^= P::PM_LibStaticDataGetDataFromPTP(ptp, &fixed);
    sum = mixed(sum, &fixed, sizeof fixed);
    stage.say("ptp", {id, sum});
  }
}

}  // namespace

std::vector<Op> life_actions() {
  return {
      SOAK_SAME(0, "enrol", enrol),
      SOAK_SAME(0, "construct", construct, any),
      SOAK_SAME(0, "destruct", destruct),
      SOAK_SAME(1, "start-fid", start_fid, yes),
      SOAK_SAME(1, "start-phase", start_phase, few),
      SOAK_SAME(6, "deliver", deliver),
      SOAK_SAME(4, "side", change_side, yes),
      SOAK_SAME(1, "pair", pair),
      SOAK_SAME(2, "detach", detach),
      SOAK_SAME(2, "attach", attach, few),
      SOAK_SAME(2, "failover", failover),
      SOAK_SAME(6, "synchronise", synchronise),
      SOAK_SAME(1, "compare-sides", differences),
      SOAK_SAME(40, "fault", arm, fault, nth, answer),
      SOAK_SAME(8, "advance", slow, ticks),
      SOAK_SAME(2, "board-out", board_out, frame, slot),
      SOAK_SAME(3, "board-in", board_in, frame, slot, few, bits),
      SOAK_SAME(3, "dependence", dependence, few),
      SOAK_SAME(3, "batch-state", batch_state, few),
      SOAK_BOTH(1, "construct-phase", construct_phase, few),
      SOAK_BOTH(2, "everything", everything),
  };
}

}  // namespace soak
