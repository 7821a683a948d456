#pragma once

#include <QByteArrayList>
#include <QString>

#include <optional>

#include <sys/types.h>

// An open file or directory, closed with the object.
class Descriptor {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : m_number(other.release())
    {
    }
    Descriptor &operator=(Descriptor &&other) noexcept;
    ~Descriptor();

    bool isOpen() const { return m_number >= 0; }
    int number() const { return m_number; }
    int release();

private:
    int m_number;
};

// Removes single files below a directory without ever leaving it, whoever moves it or puts links in
// its place meanwhile: everything is done from the descriptor that the constructor opens. Symbolic
// links are neither followed nor removed, and other file systems are not entered.
//
// Paths are relative to the directory and, as the system has them, bytes. Where an error is told it
// is one of errno, and 0 is success; EINVAL is a path that is no plain one, ENOTDIR one that leads
// through a link or a file, EXDEV one that leads into another file system.
class DirectoryTree {
public:
    // Levels below the directory that are looked at when all of it is: each holds a descriptor. A
    // path of the system, 4096 bytes at most, can have more of them, but no program has such files.
    static constexpr int mostLevels = 256;

    explicit DirectoryTree(const QString &top); // an absolute path without links

    bool isOpen() const { return m_top.isOpen(); }
    int error() const { return m_error; } // why it is not open

    // Not set where there is no regular file of this name in the directory itself, or one of more
    // bytes than this; errno is then set.
    std::optional<QByteArray> read(const char *name, qint64 mostBytes) const;

    // Succeeds when no regular file of this path is there any more. A link or a directory of the
    // name is no such file and stays.
    int removeFile(const QByteArray &path) const;

    // Removes the directories on the way to this file as far as they are empty. Fails with the path
    // of the directory that refuses, which is not always an empty one.
    struct Refusal {
        QByteArray directory;
        int error = 0;
    };
    Refusal removeEmptyParents(const QByteArray &path) const;

    // The files below, and the directories that hold nothing or were not entered: their names end
    // in "/".
    struct Contents {
        QByteArrayList files;
        QByteArrayList emptyDirectories;
        QByteArrayList closedDirectories;
    };
    Contents contents() const;

    // Removes all directories below that hold nothing but directories.
    void removeEmptyDirectories() const;

    // Removes the directory itself, if it is empty.
    int removeTop() const;

private:
    Descriptor openParent(const QByteArrayList &parts) const;

    QByteArray m_name; // of the directory in its parent
    Descriptor m_top;
    int m_error = 0;
};
