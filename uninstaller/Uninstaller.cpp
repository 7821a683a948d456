#include "uninstaller/Uninstaller.h"

#include <QtConcurrent>

Uninstaller::Uninstaller(const Removal &removal, QObject *parent)
    : QObject(parent)
    , m_removal(removal)
{
    connect(&m_watcher, &QFutureWatcher<RemovalReport>::finished, this, [this] {
        m_report = m_watcher.result();
        emit finished();
        setPercentage(100);
    });
}

Uninstaller::~Uninstaller() { m_watcher.waitForFinished(); }

void Uninstaller::start()
{
    const auto tell = [this](int percentage) {
        QMetaObject::invokeMethod(
            this, "setPercentage", Qt::QueuedConnection, Q_ARG(int, percentage));
    };
    m_watcher.setFuture(
        QtConcurrent::run([removal = m_removal, tell] { return removal.run(tell); }));
}

void Uninstaller::setPercentage(int percentage)
{
    m_percentage = percentage;
    emit percentageChanged();
}
