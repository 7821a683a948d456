#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>
#include <QStringList>

// Removes single files below a directory without ever leaving it: no symbolic link is followed,
// and none is removed. Paths are relative to the directory and, as the system has them, bytes.
class DirectoryTree {
public:
    explicit DirectoryTree(const QString &top); // a path without links

    // True when no regular file of this path is there any more. A link or a directory of the name
    // is no such file and stays. False for a path that is no plain one, leads through a link or
    // cannot be removed.
    bool removeFile(const QByteArray &path);

    // Removes the directories that the removed files were in, as far as they are empty, and the top
    // one. When no file at all is left, the other directories, all of them empty, go too. Returns
    // those that are empty and refuse to go.
    QStringList removeEmptyDirectories();

    // The files, and the directories with nothing in them, that removeEmptyDirectories() left,
    // sorted. A directory's name ends in "/". Other file systems are named and not entered.
    QStringList left() const { return m_left; }

private:
    QByteArray m_top;
    QSet<QByteArray> m_ours; // directories that held the removed files, and their parents
    QStringList m_left;
};
