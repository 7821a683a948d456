#pragma once

#include "base/Directory.h"

#include <QString>

// writeFile() of the text's UTF-8 form, for a path. The last part of the path is never followed
// when it is a link.
WrittenFile writeTextFile(const QString &path, const QString &text, mode_t mode);
