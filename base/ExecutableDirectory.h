#pragma once

#include <QString>

// The directory of the running executable, without a trailing "/". The settings are read from it at
// start, and it is the tree that an installation copies.
QString executableDirectory();
