#include "api/FileDownload.h"

#include <QNetworkReply>

#include <array>

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

} // namespace

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
    if (!m_file.fileName().isEmpty()) {
        m_file.open(QIODevice::WriteOnly);
    }
}

void FileDownload::chooseFile(const QString &installPath, bool isLinux)
{
    const OutputNames &names = outputNames.at(static_cast<std::size_t>(m_kind));
    const bool isAbsolute = m_kind == ProtocolProgram && !isLinux;
    // The updater that picks the file up looks for it behind a backslash on every system.
    const QString directory =
        installPath.isEmpty() || isAbsolute ? QString() : installPath + QLatin1Char('\\');
    m_file.setFileName(directory + (isLinux ? names.onLinux : names.elsewhere));
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
