#pragma once

#include <QFile>
#include <QPointer>
#include <QString>

class QNetworkReply;
class QObject;
class QUrl;

// The file that is being downloaded, one at a time. What cannot be written is lost silently, and
// nothing verifies what has arrived: the file may be cut, a page that tells an error, or hostile.
// Whoever starts it has to verify it before.
class FileDownload {
public:
    enum Kind { FullPackage = 0, MainProgram = 1, ProtocolProgram = 2 };

    // http and https only. The address comes from a reply, and "file:" would publish what only
    // root may read.
    static bool isAllowed(const QUrl &address);

    // Ends the running download, if any: its reply tells the listener nothing more.
    void stop(const QObject *listener);
    // Empties the output file of this kind; an unknown kind goes on using the file of the download
    // before. Only the owner may read it (0600) until it is whole, then everybody (0644). Whatever
    // else lies under its name, a link, a pipe or the file of another user, gives way to a new
    // file. The reply is released when the download ends.
    void start(QNetworkReply *reply, int kind, const QString &installPath, bool isLinux);
    void receive(qint64 total); // appends what the reply has buffered
    // A reply reports its progress once more before it finishes, so nothing is left to append.
    bool finish(); // true when a size was reported that is more than nothing

    int kind() const { return m_kind; }

private:
    void chooseFile(const QString &installPath, bool isLinux);
    void openFile();
    void close();

    QString m_fileName;
    QFile m_file; // open while it is written
    QPointer<QNetworkReply> m_reply;
    int m_kind = FullPackage;
    qint64 m_total = 0; // bytes, as reported last; negative while the server names none
};
