#pragma once

#include <QMetaMethod>
#include <QSignalSpy>

#include <map>

// Listeners to every signal that the class of an object declares, by the signals' names.
using Spies = std::map<QByteArray, QSignalSpy>;

inline Spies spiesOn(const QObject *object)
{
    Spies spies;
    const QMetaObject *meta = object->metaObject();
    for (int index = meta->methodOffset(); index < meta->methodCount(); ++index) {
        if (meta->method(index).methodType() == QMetaMethod::Signal) {
            spies.try_emplace(meta->method(index).name(), object, meta->method(index));
        }
    }
    return spies;
}

// What they heard, in the order of the names: "loginStatus(true,hi,-1) userInfoStatus(true,)".
inline QString written(const Spies &spies)
{
    QStringList all;
    for (const auto &[name, spy] : spies) {
        for (const QVariantList &arguments : spy) {
            all.append(name + '(' + QVariant(arguments).toStringList().join(',') + ')');
        }
    }
    return all.join(' ');
}
