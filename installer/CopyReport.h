#pragma once

#include "installer/DirectoryCopy.h"

#include <QString>

// What people are told about a copy: nothing when it succeeded, else what could not be written,
// where and why, and how much is missing; in the language of the interface. Counts the files of
// fromDir.
QString copyReport(const CopyOutcome &outcome, const QString &fromDir);
