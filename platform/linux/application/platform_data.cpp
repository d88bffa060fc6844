#include "platform/linux/application/platform_data.h"

#include <cstdint>
#include <string>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* startupIdVariable = "DESKTOP_STARTUP_ID";
constexpr const char* tokenKey = "activation-token";
constexpr const char* startupIdKey = "desktop-startup-id";
/// Expiry time in microseconds of the monotonic clock, which all processes share.
constexpr const char* expiryKey = "com.tovenworks.quillmar.expires";

void add(GVariantBuilder& data, const char* key, const Environment& environment,
         const char* variable) {
  const std::string value = environment.value(variable).value_or("");
  if (value.empty()) return;
  g_variant_builder_add(&data, "{sv}", key,
                        g_variant_new_string(text::replacingInvalidCharacters(value).c_str()));
}

GVariantBuilder builderFor(const Environment& environment) {
  GVariantBuilder data;
  g_variant_builder_init(&data, G_VARIANT_TYPE_VARDICT);
  add(data, tokenKey, environment, tokenVariable);
  add(data, startupIdKey, environment, startupIdVariable);
  return data;
}

std::string lookUp(GVariant* data, const char* key) {
  const GVariantPtr value(g_variant_lookup_value(data, key, G_VARIANT_TYPE_STRING));
  return value ? g_variant_get_string(value.get(), nullptr) : "";
}

}  // namespace

GVariant* platformData(const Environment& environment) {
  GVariantBuilder data = builderFor(environment);
  return g_variant_builder_end(&data);
}

GVariant* platformData(const Environment& environment, std::chrono::milliseconds timeout) {
  GVariantBuilder data = builderFor(environment);
  const std::chrono::microseconds expiry =
      std::chrono::microseconds(g_get_monotonic_time()) + timeout;
  g_variant_builder_add(&data, "{sv}", expiryKey, g_variant_new_int64(expiry.count()));
  return g_variant_builder_end(&data);
}

Activation activationOf(const Environment& environment) {
  return activationIn(GVariantPtr(g_variant_ref_sink(platformData(environment))).get());
}

Environment withoutActivation(Environment environment) {
  for (const char* variable : {tokenVariable, startupIdVariable}) {
    environment.variables.erase(variable);
    g_unsetenv(variable);
  }
  return environment;
}

Activation activationIn(GVariant* platformData) {
  const std::string startupId = lookUp(platformData, startupIdKey);
  Activation activation{0, lookUp(platformData, tokenKey)};
  // On X11 a token is a startup id as well.
  if (activation.token.empty()) activation.token = startupId;
  activation.timestamp = timeOfStartupId(startupId.empty() ? activation.token : startupId);
  return activation;
}

bool hasExpired(GVariant* platformData) {
  const GVariantPtr expiry(g_variant_lookup_value(platformData, expiryKey, G_VARIANT_TYPE_INT64));
  return expiry && g_variant_get_int64(expiry.get()) < g_get_monotonic_time();
}

}  // namespace quillmar
