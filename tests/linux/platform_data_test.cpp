#include "platform/linux/application/platform_data.h"

#include <chrono>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {
namespace {

Activation parsed(const char* text) {
  const GVariantPtr data(g_variant_ref_sink(g_variant_new_parsed(text)));
  return activationIn(data.get());
}

TEST(PlatformData, AStartupIdIsATokenAndEndsWithItsTime) {
  EXPECT_EQ(parsed("{'desktop-startup-id': <'panel/quillmar/3-host_TIME123456'>}"),
            (Activation{123456, "panel/quillmar/3-host_TIME123456"}));
}

TEST(PlatformData, ATokenComesBeforeAStartupId) {
  EXPECT_EQ(parsed("{'activation-token': <'token'>, 'desktop-startup-id': <'id_TIME9'>}"),
            (Activation{9, "token"}));
}

TEST(PlatformData, ATokenThatIsAStartupIdHasItsTime) {
  EXPECT_EQ(parsed("{'activation-token': <'id_TIME9'>}"), (Activation{9, "id_TIME9"}));
}

TEST(PlatformData, AStartupIdWithoutATimeOfTheServerHasNone) {
  for (const char* text :
       {"{'desktop-startup-id': <'id'>}", "{'desktop-startup-id': <'id_TIME'>}",
        "{'desktop-startup-id': <'id_TIME12x'>}", "{'desktop-startup-id': <'id_TIME-1'>}",
        "{'desktop-startup-id': <'id_TIME4294967296'>}"}) {
    EXPECT_EQ(parsed(text).timestamp, 0u) << text;
  }
  EXPECT_EQ(parsed("{'desktop-startup-id': <'id_TIME5_TIME4294967295'>}").timestamp, 4294967295u);
}

TEST(PlatformData, EntriesOfAnotherTypeAreIgnored) {
  EXPECT_EQ(parsed("{'activation-token': <7>, 'desktop-startup-id': <true>}"), Activation{});
  EXPECT_EQ(parsed("@a{sv} {}"), Activation{});
}

TEST(PlatformData, HandsOnWhatThisProcessWasStartedWith) {
  const Environment environment{
      {{"XDG_ACTIVATION_TOKEN", "token"}, {"DESKTOP_STARTUP_ID", "id_TIME3"}}};
  const GVariantPtr data(g_variant_ref_sink(platformData(environment)));
  EXPECT_EQ(activationIn(data.get()), (Activation{3, "token"}));
  EXPECT_EQ(activationOf(environment), (Activation{3, "token"}));
  EXPECT_FALSE(hasExpired(data.get()));
}

TEST(PlatformData, WhatIsStartedLaterDoesNotInheritIt) {
  g_setenv("XDG_ACTIVATION_TOKEN", "token", TRUE);
  g_setenv("DESKTOP_STARTUP_ID", "id_TIME3", TRUE);
  const Environment rest = withoutActivation(
      {{{"XDG_ACTIVATION_TOKEN", "token"}, {"DESKTOP_STARTUP_ID", "id_TIME3"}, {"LANG", "C"}}});
  EXPECT_EQ(rest.variables, (std::map<std::string, std::string>{{"LANG", "C"}}));
  EXPECT_EQ(g_getenv("XDG_ACTIVATION_TOKEN"), nullptr);
  EXPECT_EQ(g_getenv("DESKTOP_STARTUP_ID"), nullptr);
}

TEST(PlatformData, HoldsNothingWhenTheEnvironmentHoldsNothing) {
  const Environment environment{{{"XDG_ACTIVATION_TOKEN", ""}}};
  const GVariantPtr data(g_variant_ref_sink(platformData(environment)));
  EXPECT_EQ(g_variant_n_children(data.get()), 0u);
}

TEST(PlatformData, ARequestExpiresAfterItsDeadline) {
  const GVariantPtr fresh(g_variant_ref_sink(platformData({}, std::chrono::hours(1))));
  EXPECT_FALSE(hasExpired(fresh.get()));
  const GVariantPtr stale(g_variant_ref_sink(platformData({}, std::chrono::milliseconds(-1))));
  EXPECT_TRUE(hasExpired(stale.get()));
}

}  // namespace
}  // namespace quillmar
