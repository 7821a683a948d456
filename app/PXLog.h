#pragma once

#include <QObject>
#include <QString>

// Turns the log file in the working directory on: the first getInstance() installs outputMessage()
// as the message handler of the process. Nothing in a delivered build asks for it.
class PXLog : public QObject {
    Q_OBJECT

public:
    static PXLog *getInstance(); // never deleted

    void test();

    // type is a QtMsgType.
    Q_INVOKABLE void qDebugInfo(int type, const QString &msg);

private:
    explicit PXLog(QObject *parent = nullptr);

    static PXLog *instance;
};
