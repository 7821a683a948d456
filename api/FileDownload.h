#pragma once

#include <QFile>
#include <QPointer>
#include <QString>

class QNetworkReply;
class QObject;

// The file that is being downloaded, one at a time. What cannot be written is lost silently.
class FileDownload {
public:
    enum Kind { FullPackage = 0, MainProgram = 1, ProtocolProgram = 2 };

    // Ends the running download, if any: its reply tells the listener nothing more.
    void stop(const QObject *listener);
    // Empties the output file of this kind; an unknown kind goes on using the file of the download
    // before. The reply is released when the download ends.
    void start(QNetworkReply *reply, int kind, const QString &installPath, bool isLinux);
    void receive(qint64 total); // appends what the reply has buffered
    // A reply reports its progress once more before it finishes, so nothing is left to append.
    bool finish(); // true when a size was reported that is more than nothing

    int kind() const { return m_kind; }

private:
    void chooseFile(const QString &installPath, bool isLinux);
    void close();

    QFile m_file;
    QPointer<QNetworkReply> m_reply;
    int m_kind = FullPackage;
    qint64 m_total = 0; // bytes, as reported last; negative while the server names none
};
