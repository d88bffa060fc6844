#include "platform/linux/hot_keys/desktop_hot_keys.h"

#include <gtest/gtest.h>

#include "platform/linux/hot_keys/portal_hot_keys.h"
#include "platform/linux/hot_keys/x11_hot_keys.h"

namespace quillmar {
namespace {

TEST(DesktopHotKeys, AnX11SessionUsesGrabs) {
  const Environment environment{{{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", ""}}};
  EXPECT_TRUE(dynamic_cast<X11HotKeys*>(makeDesktopHotKeys(environment).get()));
}

TEST(DesktopHotKeys, AWaylandSessionUsesThePortalEvenIfItHasAnXServer) {
  const Environment environment{{{"DISPLAY", ":0"}, {"WAYLAND_DISPLAY", "wayland-0"}}};
  EXPECT_TRUE(dynamic_cast<PortalHotKeys*>(makeDesktopHotKeys(environment).get()));
}

TEST(DesktopHotKeys, WithoutADisplayEveryRegistrationFailsBecauseThereIsNoService) {
  const auto hotKeys = makeDesktopHotKeys({});
  for (const std::uint32_t keyCode : {0, 1}) {
    const auto outcome = hotKeys->registerHotKey({.keyCode = keyCode});
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error(), HotKeyStatus::noService);
  }
}

}  // namespace
}  // namespace quillmar
