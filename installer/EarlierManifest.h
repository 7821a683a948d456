#pragma once

#include <QString>

// An installation over an earlier one replaces its manifest, and files that the new version no
// longer has would be nobody's. Writes beside it (InstalledFiles::previousManifest) what the
// target's manifests list and the bundle's does not. Does nothing where one of the two has no
// manifest.
void keepEarlierManifest(const QString &bundle, const QString &target);
