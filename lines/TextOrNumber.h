#pragma once

#include <QJsonValue>
#include <QString>
#include <QVariant>

// The server sends some values as text in one release and as number in another. Any other JSON type
// reads as empty or zero.

inline QString textOrNumberToText(const QJsonValue &value)
{
    return value.isDouble() ? value.toVariant().toString() : value.toString();
}

inline int textOrNumberToInt(const QJsonValue &value)
{
    return value.isString() ? value.toString().toInt() : value.toInt();
}

inline double textOrNumberToDouble(const QJsonValue &value)
{
    return value.isString() ? value.toString().toDouble() : value.toDouble();
}
