#include "suite/connection/settings_place.h"

namespace connection {

const char* usersSettings() { return "~/.config/brivel/brivel.toml"; }

}  // namespace connection
