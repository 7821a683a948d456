#pragma once

#include <QString>

#include <functional>

// How a copy ended. Names and directories are as they were given or listed.
struct CopyOutcome {
    enum Step { Done, MakeDirectory, ReadDirectory, Read, Write };

    Step failed = Done;
    int error = 0; // of the step that failed, as errno has it; 0 where it cannot be known
    QString name; // of the file or directory; empty for the top one
    QString directory; // that it was to be read from or written to
    int files = 0; // copied

    bool isCopied() const { return failed == Done; }
};

// Copies what is in fromDir, hidden entries excepted, into toDir, whose parent must exist. Stops at
// the first failure and leaves what it has copied. An existing file is replaced if cover is true
// and is a failure otherwise. Copied are regular files, directories and links to them; special
// files and links that lead nowhere are no entries, but a link to a special file is a failure, as
// are a directory that cannot be read and a name that is no text.
//
// toDir is looked up once and held: what is written goes there, whatever becomes of the name. As
// root no link is followed that somebody else may have planted (see Directory). Directories that
// are made have the modes of the source's, the top one 0755.
//
// directoryDone is called, on this thread, for each directory whose entries were all copied, the
// top one last. A directory that is its own target, also through links, counts as copied. Left out
// are directories that this copy is just reading or writing, so neither a target inside the source
// nor a link to a parent directory makes it endless.
CopyOutcome copyDirectoryTree(const QString &fromDir, const QString &toDir, bool cover,
    const std::function<void()> &directoryDone);
