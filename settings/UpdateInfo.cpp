#include "settings/UpdateInfo.h"

#include "base/Deployment.h"

UpdateInfo::UpdateInfo()
    : updateUrl(Deployment::current().updatePlaceholder)
    , version(QStringLiteral("1"))
    , versionShow(QStringLiteral("1.0"))
{
}
