#include "suite/connection/settings_place.h"

namespace connection {

const char* usersSettings() { return "%APPDATA%\\brivel\\brivel.toml"; }

}  // namespace connection
