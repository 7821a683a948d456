#pragma once

#include <QString>
#include <QStringList>

// The addresses and identifiers of one deployment. They are set when the build is configured
// (cmake/Deployment.cmake). Classes copy what they need when they are constructed, so a test puts
// loopback addresses into current() before it creates them.
struct Deployment {
    QString apiBaseAddress; // scheme and host, no trailing slash
    QStringList mirrorAddresses; // discovery files, asked in this order; an empty entry asks nobody
    QString ipLookupAddress; // empty: no lookup
    QString oauthClientId;
    QString webSignInHost; // scheme and host, no trailing slash
    QString chatGroupLink;
    QString updatePlaceholder;

    static Deployment &current();
};
