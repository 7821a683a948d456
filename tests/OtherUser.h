#pragma once

#include <QFile>
#include <QString>

#include <unistd.h>

// Somebody else on this machine. Only root can be him; elsewhere the tests with him are skipped.
namespace OtherUser {

constexpr uid_t id = 65534;

// Not for root of a user namespace, which has no other user.
inline bool exists() { return geteuid() == 0 && seteuid(id) == 0 && seteuid(0) == 0; }

inline bool owns(const QString &path)
{
    return lchown(QFile::encodeName(path).constData(), id, id) == 0;
}

// This process works with his rights.
struct Rights {
    Rights() { isTaken = seteuid(id) == 0; }
    ~Rights() { isTaken = seteuid(0) != 0; }
    Rights(const Rights &) = delete;
    Rights &operator=(const Rights &) = delete;

    bool isTaken;
};

} // namespace OtherUser
