#pragma once

#include <QString>

#include <functional>

// Copies what is in fromDir, hidden entries excepted, into toDir, whose parent must exist. Stops at
// the first failure and leaves what it has copied. An existing file is replaced if cover is true
// and is a failure otherwise.
//
// directoryDone is called, on this thread, for each directory whose entries were all copied, the
// top one last. A directory that is its own target, also through links, counts as copied. Left out
// are directories that this copy is just reading or writing, so neither a target inside the source
// nor a link to a parent directory makes it endless.
bool copyDirectoryTree(const QString &fromDir, const QString &toDir, bool cover,
    const std::function<void()> &directoryDone);
