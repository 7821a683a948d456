#pragma once

#include <QString>

#include <optional>

#include <sys/types.h>

// Who sits in front of a program that pkexec or sudo runs as root. Both set a variable for it.
namespace AskingUser {

// Nothing when this process was not raised to root by one of them.
std::optional<uid_t> id();
// The home directory of that user, or else of the user of this process. Asks the user database,
// which may be a slow one.
QString home();

} // namespace AskingUser
