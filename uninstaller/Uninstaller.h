#pragma once

#include "uninstaller/Removal.h"

#include <QFutureWatcher>
#include <QObject>
#include <QStringList>

// The removal as the window sees it. It works on a thread of the global pool.
class Uninstaller : public QObject {
    Q_OBJECT
    Q_PROPERTY(int percentage MEMBER m_percentage NOTIFY percentageChanged)
    Q_PROPERTY(QStringList kept READ kept NOTIFY finished)
    Q_PROPERTY(QStringList failed READ failed NOTIFY finished)

public:
    explicit Uninstaller(const Removal &removal, QObject *parent = nullptr);
    ~Uninstaller() override; // waits for the removal

    Q_INVOKABLE void start(); // once

    QStringList kept() const { return m_report.kept; }
    QStringList failed() const { return m_report.failed; }

signals:
    void percentageChanged();
    void finished();

private slots:
    void setPercentage(int percentage);

private:
    Removal m_removal;
    RemovalReport m_report;
    QFutureWatcher<RemovalReport> m_watcher;
    int m_percentage = 0;
};
