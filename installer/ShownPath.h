#pragma once

#include <QString>

// A path as it may stand in a sentence for people: one line without control characters and without
// those that turn the direction of the text, and not endless.
QString shownPath(const QString &path);
