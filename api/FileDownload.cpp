#include "api/FileDownload.h"

#include <QNetworkReply>
#include <QUrl>

#include <array>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct OutputNames {
    QLatin1String onLinux;
    QLatin1String elsewhere;
};

// By FileDownload::Kind.
const std::array<OutputNames, 3> outputNames = {{
    {QLatin1String("VornInstall.run"), QLatin1String("VornInstall.exe")},
    {QLatin1String("VORNTemp"), QLatin1String("VORNTemp.exe")},
    {QLatin1String("sarko2linuxTemp"), QLatin1String("C:/VornVPN/sarko2winTemp.exe")},
}};

// Emptied, and readable by its owner only. -1 when it cannot be opened or is no regular file of
// this user's own under this name alone; the pipe that it may be is not waited for.
int openOwnFile(const QByteArray &name, int flags)
{
    constexpr mode_t ownersOnly = S_IRUSR | S_IWUSR;
    const int descriptor = open(name.constData(),
        O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | flags, ownersOnly);
    struct stat file = {};
    if (descriptor < 0) {
        return descriptor;
    }
    if (fstat(descriptor, &file) == 0 && S_ISREG(file.st_mode) && file.st_nlink == 1
        && file.st_uid == geteuid() && fchmod(descriptor, ownersOnly) == 0
        && ftruncate(descriptor, 0) == 0) {
        return descriptor;
    }
    close(descriptor);
    return -1;
}

} // namespace

bool FileDownload::isAllowed(const QUrl &address)
{
    return address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
}

void FileDownload::stop(const QObject *listener)
{
    if (m_reply) {
        m_reply->disconnect(listener);
        m_reply->abort();
    }
    close();
}

void FileDownload::start(QNetworkReply *reply, int kind, const QString &installPath, bool isLinux)
{
    m_reply = reply;
    m_kind = kind;
    m_total = 0;
    if (kind >= FullPackage && kind <= ProtocolProgram) {
        chooseFile(installPath, isLinux);
    }
    if (!m_fileName.isEmpty()) {
        openFile();
    }
}

void FileDownload::openFile()
{
    const QByteArray name = QFile::encodeName(m_fileName);
    int descriptor = openOwnFile(name, 0);
    if (descriptor < 0 && unlink(name.constData()) == 0) {
        descriptor = openOwnFile(name, O_EXCL);
    }
    if (descriptor >= 0) {
        m_file.open(descriptor, QIODevice::WriteOnly, QFile::AutoCloseHandle);
    }
}

void FileDownload::chooseFile(const QString &installPath, bool isLinux)
{
    const OutputNames &names = outputNames.at(static_cast<std::size_t>(m_kind));
    const bool isAbsolute = m_kind == ProtocolProgram && !isLinux;
    // The updater that picks the file up looks for it behind a backslash on every system.
    const QString directory =
        installPath.isEmpty() || isAbsolute ? QString() : installPath + QLatin1Char('\\');
    m_fileName = directory + (isLinux ? names.onLinux : names.elsewhere);
}

void FileDownload::receive(qint64 total)
{
    m_total = total;
    if (m_reply) {
        const QByteArray bytes = m_reply->readAll();
        if (m_file.isOpen()) {
            m_file.write(bytes);
        }
    }
}

bool FileDownload::finish()
{
    const bool isWhole = m_reply && m_reply->error() == QNetworkReply::NoError;
    if (isWhole && m_file.isOpen() && m_file.flush()) {
        fchmod(m_file.handle(), 0644);
    }
    close();
    return m_total > 0;
}

void FileDownload::close()
{
    m_file.close();
    if (m_reply) {
        m_reply->deleteLater();
        m_reply.clear();
    }
}
