#pragma once

#include <QString>

// Runs a command through /bin/sh and waits for it. Its output goes where this program's goes, and
// what became of it is nobody's concern: the callers have no way to repair a refused chmod or rm.
void runShellCommand(const QString &command);
