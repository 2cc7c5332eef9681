#pragma once

namespace connection {

/// How messages call the user's own settings file.
const char* usersSettings();

}  // namespace connection
