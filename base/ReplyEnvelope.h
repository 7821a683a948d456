#pragma once

#include <QJsonObject>
#include <QString>

// What every reply of the server carries: "code", "msg" and "data". JSON types are read strictly; a
// missing "code" is 0.

inline int codeOf(const QJsonObject &reply) { return reply.value(QLatin1String("code")).toInt(); }

inline bool succeeded(const QJsonObject &reply) { return codeOf(reply) == 0; }

inline QString messageOf(const QJsonObject &reply)
{
    return reply.value(QLatin1String("msg")).toString();
}

inline QJsonObject dataOf(const QJsonObject &reply)
{
    return reply.value(QLatin1String("data")).toObject();
}

inline QString textOf(const QJsonObject &object, const char *key)
{
    return object.value(QLatin1String(key)).toString();
}
