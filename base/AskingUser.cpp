#include "base/AskingUser.h"

#include <QDir>
#include <QFile>
#include <QtGlobal>

#include <pwd.h>
#include <unistd.h>

std::optional<uid_t> AskingUser::id()
{
    if (geteuid() != 0) {
        return std::nullopt;
    }
    for (const char *variable : {"PKEXEC_UID", "SUDO_UID"}) {
        bool isNumber = false;
        const uid_t user = qgetenv(variable).toUInt(&isNumber);
        if (isNumber) {
            return user;
        }
    }
    return std::nullopt;
}

QString AskingUser::home()
{
    if (const std::optional<uid_t> user = id()) {
        QByteArray texts(16 * 1024, '\0');
        passwd entry{};
        passwd *found = nullptr;
        const auto room = static_cast<std::size_t>(texts.size());
        if (getpwuid_r(*user, &entry, texts.data(), room, &found) == 0 && found != nullptr) {
            return QFile::decodeName(found->pw_dir);
        }
    }
    return QDir::homePath();
}
