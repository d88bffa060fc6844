// The information dictionary of a bundle: build-specific strings by key. Any thread.

#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace quillmar {

using BundleInformation = std::map<std::string, std::string, std::less<>>;

/// The keys that the program reads. All are optional.
namespace information_key {

inline constexpr std::string_view version = "CFBundleShortVersionString";
inline constexpr std::string_view copyright = "NSHumanReadableCopyright";
/// Two https URLs and an e-mail address.
inline constexpr std::string_view packsURL = "QuillmarPacksURL";
inline constexpr std::string_view siteURL = "QuillmarSiteURL";
inline constexpr std::string_view supportAddress = "QuillmarSupportAddress";
/// URL of the appcast, and the Ed25519 public key (base64) that verifies updates.
inline constexpr std::string_view feedURL = "SUFeedURL";
inline constexpr std::string_view publicEDKey = "SUPublicEDKey";

}  // namespace information_key

/// Parses a JSON object. Values that are not strings are ignored; of duplicate keys, the last wins.
/// Input that is not a JSON object gives an empty dictionary.
BundleInformation parseBundleInformation(std::string_view json);

}  // namespace quillmar
