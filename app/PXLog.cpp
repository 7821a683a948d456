#include "app/PXLog.h"

#include "app/LogHandlers.h"

PXLog *PXLog::instance = nullptr;

PXLog *PXLog::getInstance()
{
    if (!instance) {
        instance = new PXLog;
    }
    return instance;
}

PXLog::PXLog(QObject *parent)
    : QObject(parent)
{
    qInstallMessageHandler(outputMessage);
}

void PXLog::test() { }

void PXLog::qDebugInfo(int type, const QString &msg)
{
    outputMessage(static_cast<QtMsgType>(type), QMessageLogContext(), msg);
}
