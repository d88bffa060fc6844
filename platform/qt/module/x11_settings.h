// The settings that an X11 desktop's settings daemon publishes (XSETTINGS).

#pragma once

#include <string>
#include <string_view>

namespace quillmar {

/// The text setting of that name on the toolkit's display; empty when there is none, and where the
/// display is not an X server.
std::string x11StringSetting(const std::string& name);

/// The same in the bytes that a settings daemon publishes; empty in damaged ones.
std::string stringSetting(std::string_view published, const std::string& name);

}  // namespace quillmar
