#pragma once

#include "uninstaller/Removal.h"

#include <QObject>
#include <QStringList>

#include <thread>

// The removal as the window sees it. It works on a thread of its own, or in start() where no thread
// is to be had. What failed is told with the reason, in the language of the moment.
class Uninstaller : public QObject {
    Q_OBJECT
    Q_PROPERTY(int percentage MEMBER m_percentage NOTIFY percentageChanged)
    Q_PROPERTY(QStringList kept READ kept NOTIFY finished)
    Q_PROPERTY(QStringList failed READ failed NOTIFY finished)
    Q_PROPERTY(bool lacksRights READ lacksRights NOTIFY finished)

public:
    explicit Uninstaller(const Removal &removal, QObject *parent = nullptr);
    ~Uninstaller() override; // waits for the removal

    Q_INVOKABLE void start(); // once

    QStringList kept() const { return m_report.kept; }
    QStringList failed() const;
    bool lacksRights() const; // with those of the administrator more would have been removed

signals:
    void percentageChanged();
    void finished();

private:
    void work();
    void setPercentage(int percentage);
    void finish(const RemovalReport &report);

    Removal m_removal;
    RemovalReport m_report;
    std::thread m_thread;
    int m_percentage = 0;
};
