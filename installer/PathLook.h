#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QUrl>

#include <memory>

// Looks at install paths on threads of its own, since a file system may hang: a look that does not
// end in time is left to itself, and its path has no hint.
class PathLook : public QObject {
    Q_OBJECT

public:
    explicit PathLook(QObject *parent = nullptr);
    ~PathLook() override; // waits for looks under way, but not for those that hang

    // Answered by looked(), unless another path is given before.
    void start(const QString &path);

signals:
    void looked(QString path, QString hint, QUrl folder);

private slots:
    void takeAnswers();

private:
    struct Workers;

    void startWorker();
    void giveUp();

    std::shared_ptr<Workers> m_workers; // shared with the threads
    QTimer m_limit;
    QString m_path;
    QString m_home; // of the user who asked, once it is known
    int m_number = 0; // of the newest path
    bool m_isWaiting = false; // for a worker
};
