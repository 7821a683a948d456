#pragma once

#include <QString>

// Creates or truncates the file and writes the UTF-8 form of the text in one piece. False only when
// the file cannot be opened; a full disk is not told.
bool writeTextFile(const QString &path, const QString &text);
