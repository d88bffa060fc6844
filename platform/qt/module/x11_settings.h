// The settings that an X11 desktop's settings daemon publishes (XSETTINGS).

#pragma once

#include <string>
#include <string_view>

namespace quillmar {

/// The string setting of that name on the toolkit's display; empty if there is none, or if the
/// display is not an X server.
std::string x11StringSetting(const std::string& name);

/// The same, parsed from the bytes of the settings property; empty if they are damaged.
std::string stringSetting(std::string_view published, const std::string& name);

}  // namespace quillmar
