#pragma once

#include <QString>

// Runs a command through /bin/sh and waits for it. Its output goes where this program's goes, and
// what became of it is nobody's concern: the callers have no way to repair a refused chmod or rm.
void runShellCommand(const QString &command);

// The text as it has to stand between double quotes to reach the command unchanged. Ordinary paths,
// those of Windows too, stay as they are.
QString insideQuotes(const QString &text);

// Whether this can be the name of a process, or a part of it, and nothing else to the shell, to
// grep or to the file system: letters, digits and the marks that names have.
bool isProcessName(const QString &name);
