#pragma once

#include <QDebug>

// One line of the debug log: a label directly followed by its values, without quotes or blanks.
inline QDebug debugLine() { return qDebug().noquote().nospace(); }
