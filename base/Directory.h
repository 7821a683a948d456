#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

#include <sys/types.h>

// A directory that is held by a descriptor: what is done in it stays in it, whoever moves it or
// puts a link in its place meanwhile.
//
// Where root works, links are followed only if somebody made them who may: on the way to a
// directory root and the user who asked for root (an /opt that is a link), below it root alone.
// Everybody else works with his own rights only, and follows every link.
class Directory {
public:
    // What tells two names of one directory apart from two directories.
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0; // 0: there is no such directory

        static Identity of(const QString &path);
        bool operator==(const Identity &other) const
        {
            return inode != 0 && inode == other.inode && device == other.device;
        }
    };

    Directory() = default; // not open
    static Directory notOpen(int error);
    static Directory open(const QString &path);
    ~Directory();
    Directory(Directory &&other) noexcept
        : m_handle(std::exchange(other.m_handle, -1))
        , m_error(other.m_error)
    {
    }
    Directory &operator=(Directory &&other) noexcept
    {
        std::swap(m_handle, other.m_handle);
        m_error = other.m_error;
        return *this;
    }

    bool isOpen() const { return m_handle >= 0; }
    // Why it is not open, as errno has it. ELOOP stands for a link that is not followed.
    int error() const { return m_error; }
    int handle() const { return m_handle; } // for the ...at() calls only (O_PATH)

    // A name without slashes.
    Directory subdirectory(const QByteArray &name) const;
    // A new directory, with exactly this mode where root works and less the umask elsewhere. It is
    // not open when the name is taken.
    Directory makeSubdirectory(const QByteArray &name, mode_t mode) const;
    // A new empty directory that nobody else can enter, of a name that is not listed.
    Directory makePrivate(QByteArray *name) const;

    Identity identity() const;
    // Another user can put links under the names in it while root works there.
    bool isExposed() const;
    // A path for functions that take no descriptor, good for as long as this object: the canonical
    // one where nobody else can lead it elsewhere while root works, else the descriptor's, which
    // takes the kernel a third longer. Empty when there is no /proc.
    QString path() const;
    // The same for a subdirectory of one whose path() is known already.
    QString pathBelow(const QString &parentPath) const;

private:
    QString canonicalPath() const;

    explicit Directory(int handle); // -1: errno tells why

    int m_handle = -1;
    int m_error = 0;
};

// Replaces what has this name, a link or a pipe too, by a regular file of this content and mode: it
// is written beside and renamed into place. Where no file can be made beside it, a regular file
// that may be written is overwritten.
struct WrittenFile {
    bool isOpened = false; // it could be opened for writing
    bool isWritten = false; // and holds all of the content; otherwise an earlier one is as it was
};
WrittenFile writeFile(
    const Directory &directory, const QByteArray &name, const QByteArray &content, mode_t mode);

// All of it, however often the kernel has to be asked. False when it does not take everything.
bool writeAll(int handle, const QByteArray &content);
