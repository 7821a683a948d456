#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

class QFile;

// The files that the store reads and writes lie in directories that other users may change while
// root works there: a link at a file's name is followed only if root or this user made it.
namespace ReplacedFile {

constexpr qint64 longest = qint64(16) * 1024 * 1024; // bytes; nothing of ours comes near it

// Opens a regular file and nothing else: no pipe, no device, no directory, not what somebody else's
// link leads to. What is opened is what was looked at, whoever exchanges the file meanwhile.
bool openToRead(const QString &path, QFile &file);

// Replaces the file in one step, by way of a temporary file beside it, so that a full disk or a
// kill leaves the old one whole. The mode is set before any content is there. Where the directory
// takes no new file, the old one is overwritten, and has its old content again when that fails.
// Temporary files that killed writers left beside it go.
//
// A file that root replaces stays its owner's where the directory is that owner's too; elsewhere
// somebody could have put it there to be given what is in it. False when it is not written.
bool write(const QString &path, const QByteArray &content, mode_t mode);

} // namespace ReplacedFile
