#pragma once

#include <QMetaType>
#include <QObject>
#include <QString>

// The update that the server offered last.
struct UpdateInfo {
    Q_GADGET
    Q_PROPERTY(QString updateUrl MEMBER updateUrl)
    Q_PROPERTY(bool force MEMBER force)
    Q_PROPERTY(QString version MEMBER version)
    Q_PROPERTY(QString versionShow MEMBER versionShow)

public:
    UpdateInfo();

    QString updateUrl; // a placeholder until the server names an address
    bool force = false; // the update is mandatory; not kept in the file
    QString version; // decimal digits
    QString versionShow; // as the user reads it
};

Q_DECLARE_METATYPE(UpdateInfo)
