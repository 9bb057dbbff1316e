// The node as a whole: scopes, misuse, doing what waits.
#include "host/call.hpp"

namespace host {

thread_local constinit Current current = {nullptr, nullptr};

Node *current_node() {
  return current.node;
}
Instance *current_instance() {
  return current.instance;
}

Scope::Scope(Node &node)
    : outer_node_(current.node),
      outer_instance_(current.instance),
      outer_turn_(node.watchdog.begin_turn(node.clock.elapsed())) {
  current = {&node, nullptr};
}

Scope::Scope(Instance &instance) : Scope(instance.node) {
  current.instance = &instance;
}

Scope::~Scope() {
  current.node->watchdog.end_turn(outer_turn_);
  current = {outer_node_, outer_instance_};
}

std::optional<Fn> find_fn(std::string_view name) {
  for (const FnInfo &info : fn_infos) {
    if (name == info.name) {
      return info.fn;
    }
  }
  return std::nullopt;
}

const char *name_of(MisuseKind kind) {
  switch (kind) {
    case MisuseKind::double_free:
      return "double free";
    case MisuseKind::foreign_free:
      return "foreign free";
    case MisuseKind::wrong_module:
      return "wrong module";
    case MisuseKind::freed_while_linked:
      return "freed while linked";
    case MisuseKind::guard_damaged:
      return "guard damaged";
    case MisuseKind::linked_twice:
      return "linked twice";
    case MisuseKind::not_linked:
      return "not linked";
    case MisuseKind::bad_handle:
      return "bad handle";
    case MisuseKind::bad_bucket:
      return "bad bucket";
  }
  return "unknown";
}

Node::Node()
    : memory(*this), hash(*this), debug(*this), root(*this), ddm(*this), rpc(*this), owner(*this) {
  owner.serve(*this);
}

Node::~Node() = default;

std::size_t Node::run() {
  // Callbacks may make new work; a set of callbacks that does so for ever is left after this many
  // rounds.
  constexpr int most_rounds = 1'000;
  std::size_t total = 0;
  for (int round = 0; round < most_rounds; ++round) {
    const std::size_t done = rpc.run() + owner.run() + ddm.run() + syn.run();
    if (done == 0) {
      break;
    }
    total += done;
  }
  return total;
}

void Node::misuse(MisuseKind kind, Fn fn, std::string text) {
  constexpr std::size_t most_listed = 1'000;
  if (misuses.size() < most_listed) {
    misuses.push_back({kind, fn, std::move(text)});
  }
}

}  // namespace host
