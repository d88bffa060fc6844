// The information dictionary of a bundle: what differs from build to build, as strings by key. Any
// thread.

#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace quillmar {

using BundleInformation = std::map<std::string, std::string, std::less<>>;

/// The keys that the program asks for; every one may be missing.
namespace information_key {

inline constexpr std::string_view version = "CFBundleShortVersionString";
inline constexpr std::string_view copyright = "NSHumanReadableCopyright";
/// https addresses and an e-mail address.
inline constexpr std::string_view packsURL = "QuillmarPacksURL";
inline constexpr std::string_view siteURL = "QuillmarSiteURL";
inline constexpr std::string_view supportAddress = "QuillmarSupportAddress";
/// The feed of updates, and the Ed25519 key in base64 that signs them.
inline constexpr std::string_view feedURL = "SUFeedURL";
inline constexpr std::string_view publicEDKey = "SUPublicEDKey";

}  // namespace information_key

/// The strings of a JSON object; of a key that stands twice the last. What is no string is left
/// out, and anything but one JSON object gives an empty dictionary.
BundleInformation parseBundleInformation(std::string_view json);

}  // namespace quillmar
