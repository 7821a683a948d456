#pragma once

#include <QDebug>
#include <QLoggingCategory>

// One line of the debug log: a label directly followed by its values, without quotes or blanks.
// Nothing behind it is evaluated while debug lines are switched off (QT_LOGGING_RULES), so a value
// must not do anything that is needed.
#define debugLine() /* NOLINT: reads as the function that it stands for */                         \
    for (bool isHeard = QLoggingCategory::defaultCategory()->isDebugEnabled(); isHeard;            \
         isHeard = false)                                                                          \
    qDebug().noquote().nospace()
