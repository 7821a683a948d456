#include "base/Deployment.h"

#include "DeploymentValues.h"

Deployment &Deployment::current()
{
    static Deployment values = [] {
        Deployment configured;
        configured.apiBaseAddress = QString::fromUtf8(DeploymentValues::apiBaseAddress);
        for (const char *address : DeploymentValues::mirrorAddresses) {
            configured.mirrorAddresses.append(QString::fromUtf8(address));
        }
        configured.ipLookupAddress = QString::fromUtf8(DeploymentValues::ipLookupAddress);
        configured.oauthClientId = QString::fromUtf8(DeploymentValues::oauthClientId);
        configured.webSignInHost = QString::fromUtf8(DeploymentValues::webSignInHost);
        configured.chatGroupLink = QString::fromUtf8(DeploymentValues::chatGroupLink);
        configured.updatePlaceholder = QString::fromUtf8(DeploymentValues::updatePlaceholder);
        return configured;
    }();
    return values;
}
