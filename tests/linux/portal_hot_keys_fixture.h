// Hot keys of a program on a private bus, and the desktop that grants them.

#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/hot_keys/portal_hot_keys.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/portal_service.h"
#include "tests/linux/private_bus.h"

namespace quillmar {

/// Hot keys whose clock stands still until the test advances it.
class HotKeysOnBus {
 public:
  explicit HotKeysOnBus(const PrivateBus& bus, Environment environment = {},
                        std::chrono::milliseconds responseTimeout = std::chrono::minutes(5))
      : hotKeys_(withBus(std::move(environment), bus),
                 {.recoveryDelays = {std::chrono::milliseconds(0), std::chrono::milliseconds(0),
                                     std::chrono::milliseconds(0)},
                  .stableAfter = std::chrono::minutes(1),
                  .responseTimeout = responseTimeout,
                  .now = [this] { return now_; }}) {}

  PortalHotKeys& hotKeys() { return hotKeys_; }
  void advance(std::chrono::milliseconds time) { now_ += time; }
  void settle() {
    runMainLoopUntil([this] { return hotKeys_.isSettled(); });
  }

 private:
  static Environment withBus(Environment environment, const PrivateBus& bus) {
    environment.variables["DBUS_SESSION_BUS_ADDRESS"] = bus.address();
    return environment;
  }

  std::chrono::steady_clock::time_point now_{std::chrono::hours(1)};
  PortalHotKeys hotKeys_;
};

class PortalHotKeysTest : public testing::Test {
 protected:
  void startDesktop(PortalService::Kind kind) { desktop_.emplace(bus_, kind); }

  template <class... Settings>
  void startProgram(const Settings&... settings) {
    program_.emplace(bus_, settings...);
    program_->hotKeys().installEventHandlers({
        .pressed =
            [this](HotKeyID id, const Activation& activation) {
              pressed_.push_back(id.id);
              activation_ = activation;
            },
        .refused =
            [this](HotKeyReference reference, HotKeyStatus status) {
              std::erase(references_, reference);
              refused_.emplace_back(reference, status);
            },
        .refusalWithdrawn = [this] { ++withdrawnRefusals_; },
    });
  }

  void start(PortalService::Kind kind) {
    startDesktop(kind);
    startProgram();
  }

  /// Registers Super and the key, with the key code as id.
  HotKeyReference add(std::uint32_t keyCode, std::uint32_t modifiers = hot_key_modifiers::command) {
    const auto reference = program_->hotKeys().registerHotKey(
        {.keyCode = keyCode, .modifiers = modifiers, .id = {1, keyCode}, .description = "Title"});
    EXPECT_TRUE(reference.ok());
    references_.push_back(reference.ok() ? reference.value() : HotKeyReference{});
    return references_.back();
  }

  /// What a change of the settings does: drops all hot keys and registers these.
  void reload(const std::vector<std::uint32_t>& keyCodes) {
    for (const auto reference : std::exchange(references_, {})) {
      program_->hotKeys().unregisterHotKey(reference);
    }
    for (const auto keyCode : keyCodes) add(keyCode);
    program_->settle();
  }

  /// Presses the keys as a person does.
  std::vector<std::uint32_t> press(const std::string& keys) {
    program_->advance(std::chrono::seconds(1));
    desktop_->press(keys);
    return std::exchange(pressed_, {});
  }

  std::vector<HotKeyStatus> refusals() {
    std::vector<HotKeyStatus> statuses;
    for (const auto& refusal : std::exchange(refused_, {})) statuses.push_back(refusal.second);
    return statuses;
  }

  PrivateBus bus_;
  std::optional<PortalService> desktop_;
  std::optional<HotKeysOnBus> program_;
  std::vector<HotKeyReference> references_;
  std::vector<std::uint32_t> pressed_;
  Activation activation_;
  std::vector<std::pair<HotKeyReference, HotKeyStatus>> refused_;
  int withdrawnRefusals_ = 0;
};

}  // namespace quillmar
