// Callbacks that tell what they saw, and a node to let them be called by.
#ifndef TESTS_HOST_RIG_HPP
#define TESTS_HOST_RIG_HPP

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/host.hpp"

namespace host_rig {

using host::Instance;
using host::Node;

// What the callbacks saw, in order.
inline std::vector<std::string> seen;
inline u32 answer = 0;                // of the callbacks
inline std::function<void()> inside;  // run inside them
inline std::vector<std::string> take_seen() {
  return std::exchange(seen, {});
}
using Texts = std::vector<std::string>;

inline u32 note(const std::string &what) {
  seen.push_back(std::to_string(ROOT_LibGetCurrentCID()) + ":" + what);
  if (inside) {
    inside();
  }
  return answer;
}

inline u32 word(const void *bytes) {
  u32 value;
  std::memcpy(&value, bytes, sizeof value);
  return value;
}

inline u32 restore(u32 class_id, u32, const void *key, const void *data, u32 length) {
  const std::string text(static_cast<const char *>(data), data == nullptr ? 0 : length);
  return note(std::to_string(class_id) + "/" +
              (key == nullptr ? "null" : std::to_string(word(key))) + "=" + text);
}
class HostServices : public testing::Test {
 protected:
  HostServices() {
    seen.clear();
    answer = 0;
    inside = nullptr;
  }
  ~HostServices() override { inside = nullptr; }

  static host::ByteView text(const char *characters) {
    return {reinterpret_cast<const u8 *>(characters), std::strlen(characters)};
  }
  static void subscribe(Instance &instance, u32 class_id) {
    auto scope = host::enter(instance);
    ASSERT_EQ(DDM_LibSubscribe(instance.cid(), class_id, restore), 0u);
  }
  static u8 finished(Instance &instance, u32 class_id) {
    auto scope = host::enter(instance);
    u8 flag = 7;
    EXPECT_EQ(DDM_LibScribeIsClassBtFinished(class_id, &flag), 0u);
    return flag;
  }

  Node node;
};

}  // namespace host_rig

#endif
